// Uses what only some compilers and flags fit: CompileErrors.cmake compiles it with each.

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"

bool isSet(const ZOL::Framework::Management::WideString& name);

bool isSet(const ZOL::Framework::Management::WideString& name) {
    return ZOL::Framework::Framework::propertyManager()->hasProperty(name);
}
