// Uses what only some compilers and flags fit: CompileErrors.cmake compiles it with each. With
// ZOL_TEST_ONE_HEADER, the command line includes the header.

#if !defined(ZOL_TEST_ONE_HEADER)

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"

bool isSet(const ZOL::Framework::Management::WideString& name);

bool isSet(const ZOL::Framework::Management::WideString& name) {
    return ZOL::Framework::Framework::propertyManager()->hasProperty(name);
}

#endif
