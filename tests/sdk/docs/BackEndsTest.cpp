// The example of back-ends.md, with what the document says of it.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "usings.inc"

namespace {

TEST(BackEnds, AreConfiguredByProperties) {
    std::filesystem::remove("logs/shop.log");
#include "back_ends.inc"
    GenericLogger::Logger::getLogger("stock")->info("below the level for all");
    std::ifstream file("logs/shop.log");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_NE(text.find(" TRACE [orders] stock is low"), std::string::npos) << text;
    EXPECT_EQ(text.find("below the level"), std::string::npos) << text;
}

TEST(BackEnds, ReportAnInvalidSetting) {
    const auto wide = [](std::string_view text) {
        return WideString(text.begin(), text.end());
    };
    Framework::propertyManager()->setProperty(wide("RotatingFile.size"), wide("12Q"));
    testing::internal::CaptureStderr();
    GenericLogger::Logger::installBackend("RotatingFile");
    const std::string reported = testing::internal::GetCapturedStderr();
    std::ifstream file(WRONG_SIZE_FILE);
    std::string shown;
    std::getline(file, shown);
    EXPECT_EQ(reported, shown + "\n");
}

} // namespace
