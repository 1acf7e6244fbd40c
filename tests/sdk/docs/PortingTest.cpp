// The examples of porting.md.

#include <string_view>

#include <gtest/gtest.h>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "usings.inc"
using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(Porting, PropertiesFromNarrowLiterals) {
#include "porting_wide.inc"
    EXPECT_EQ(Framework::propertyManager()->readProperty(wide("shop.currency")), wide("EUR"));
}

TEST(Porting, ALoggerInAStaticVariable) {
#include "porting_logger.inc"
    EXPECT_EQ(logger, Logger::getLogger("shop.stock"));
}

} // namespace
