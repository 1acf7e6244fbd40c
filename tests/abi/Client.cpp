// A client of what only some compilers and flags fit, for them to accept or to refuse.

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"

bool isSet(const ZOL::Framework::Management::WideString& name);

bool isSet(const ZOL::Framework::Management::WideString& name) {
    return ZOL::Framework::Framework::propertyManager()->hasProperty(name);
}
