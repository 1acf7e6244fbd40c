#include "shared/Properties.h"

#include "ZOL/Framework/Framework.h"
#include "shared/WideText.h"

using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace Demo {

void setProperty(const char* name, std::string_view ascii) {
    Framework::propertyManager()->setProperty(wide(name), wide(ascii));
}

const WideString& readProperty(const char* name) {
    return Framework::propertyManager()->readProperty(wide(name));
}

} // namespace Demo
