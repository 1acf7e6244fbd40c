// The defaults of the Network back end, in a private network namespace: its port may be in use.

#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Collector.h"
#include "FreshProcess.h"
#include "Property.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

void leaveTheMachinesNetwork() {
    support::leaveTheMachinesMounts(); // and become root there
    support::requireMounts(unshare(CLONE_NEWNET) == 0, "unshare of the network");
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    const int any = socket(AF_INET, SOCK_DGRAM, 0);
    support::requireMounts(ioctl(any, SIOCSIFFLAGS, &request) == 0, "loopback interface");
    close(any);
}

TEST(NetworkDefaults, AreTcpToPort5170OfThisMachine) {
    support::inFreshProcess([] {
        leaveTheMachinesNetwork();
        Collector collector(Collector::Kind::tcp, 5170);
        setProperty("Network.pattern", "%v");
        Logger::installBackend("Network");
        Logger::getLogger("orders")->info("x");
        EXPECT_EQ(collector.receive("x\n"), "INFO [orders] x\n");
    });
}

} // namespace
