#include "../HeldFile.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <sys/mount.h>

#include "linux/PrivateMounts.h"

HeldFile::HeldFile(std::filesystem::path path) : path_(std::move(path)) {
    support::mountFile(path_.string(), path_.c_str());
}

HeldFile::~HeldFile() {
    umount2(path_.c_str(), MNT_DETACH);
    static_cast<void>(handle_);
}

void HeldFile::prepare() {
    support::leaveTheMachinesMounts();
}

std::string HeldFile::refusal() {
    return std::generic_category().message(EBUSY);
}
