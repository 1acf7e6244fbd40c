// The Network back end without settings, in a private network namespace, where its port is free.

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshProcess.h"
#include "linux/PrivateNetwork.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(NetworkDefaults, AreTcpToPort5170OfThisMachine) {
    support::inFreshProcess([] {
        support::leaveTheMachinesNetwork();
        Collector collector(Collector::Kind::tcp, 5170);
        Logger::installBackend("Network");
        Logger::getLogger("orders")->info("x");
        const std::string end = "INFO [orders] x\n";
        const std::string text = collector.receive(end);
        EXPECT_EQ(text.substr(text.size() - std::min(text.size(), end.size())), end) << text;
    });
}

} // namespace
