// A back end that is uninstalled and installed again by name.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "WaitFor.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(ReinstalledBackend, ReadsItsSettingsAnew) {
    inFreshFolder([] {
        setProperty("RotatingFile.path", "first.log");
        setProperty("RotatingFile.pattern", "%v");
        setProperty("RotatingFile.levels", "=INFO");
        LoggerBackend* const backend = Logger::installBackend("RotatingFile");
        Logger* const logger = Logger::getLogger("orders");
        logger->debug("dropped by the filter");
        logger->info("first");

        Logger::uninstallBackend(backend);
        setProperty("RotatingFile.path", "second.log");
        setProperty("RotatingFile.pattern", "<%v>");
        setProperty("RotatingFile.levels", "=DEBUG");
        logger->info("cached, because no back end is installed");
        EXPECT_EQ(Logger::installBackend("RotatingFile"), backend);
        logger->trace("dropped by the filter");
        logger->debug("second");
        EXPECT_EQ(textOf("first.log"), "INFO [orders] first\n");
        EXPECT_EQ(textOf("second.log"), "<INFO [orders] cached, because no back end is installed>\n"
                                        "<DEBUG [orders] second>\n");

        Logger::uninstallBackend(backend);
        setProperty("RotatingFile.path", "first.log");
        EXPECT_EQ(Logger::installBackend("RotatingFile"), backend);
        logger->info("first again");
        EXPECT_EQ(textOf("first.log"), "INFO [orders] first\n<INFO [orders] first again>\n");
    });
}

TEST(ReinstalledBackend, WritesWhatItHasKeptToTheFileBefore) {
    inFreshFolder([] {
        setProperty("RotatingFile.path", "first.log");
        setProperty("RotatingFile.pattern", "%v");
        setProperty("RotatingFile.flush", "1h");
        LoggerBackend* const backend = Logger::installBackend("RotatingFile");
        Logger* const logger = Logger::getLogger("orders");
        std::string expected;
        ASSERT_TRUE(isSoon([&] {
            logger->info("first");
            expected += "INFO [orders] first\n";
            return textOf("first.log") != expected;
        })) << "no line is kept";

        Logger::uninstallBackend(backend);
        setProperty("RotatingFile.path", "second.log");
        EXPECT_EQ(Logger::installBackend("RotatingFile"), backend);
        EXPECT_EQ(textOf("first.log"), expected);
    });
}

TEST(ReinstalledBackend, KeepsItsFileIfNothingHasChanged) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", "%v");
        LoggerBackend* const backend = Logger::installBackend("RotatingFile");
        Logger* const logger = Logger::getLogger("orders");
        logger->info("1");
        Logger::uninstallBackend(backend);
        // A file that is opened again would be created in the new folder.
        std::filesystem::create_directory("folder");
        std::filesystem::current_path("folder");
        EXPECT_EQ(Logger::installBackend("RotatingFile"), backend);
        logger->info("2");
        EXPECT_FALSE(std::filesystem::exists("zol.log"));
        std::filesystem::current_path("..");
        EXPECT_EQ(textOf("zol.log"), "INFO [orders] 1\nINFO [orders] 2\n");
    });
}

} // namespace
