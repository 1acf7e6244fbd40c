#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

#include <memory>

#include <boost/atomic/atomic_ref.hpp>

#include "ZOL/Framework/CrisisLogging/CrisisLoggerImpl.h"
#include "ZOL/Framework/StaticObjects.h"

namespace ZOL::Framework::CrisisLogging {

CrisisLogger* CrisisLogger::crisisLoggerSingleton_ = nullptr;

CrisisLogger& CrisisLogger::instance() {
    const boost::atomic_ref<CrisisLogger*> singleton(crisisLoggerSingleton_);

    CrisisLogger* logger = singleton.load(boost::memory_order_acquire);
    if (logger == nullptr) {
        const boost::mutex::scoped_lock lock(instanceMutex_);
        logger = singleton.load(boost::memory_order_relaxed);
        if (logger == nullptr) {
            logger = new CrisisLogger; // never destroyed
            singleton.store(logger, boost::memory_order_release);
        }
    }
    return *logger;
}

CrisisLogger::CrisisLogger() {
    auto impl = std::make_unique<CrisisLoggerImpl>();
    impl->open();
    impl_ = impl.release();
}

CrisisLogger::~CrisisLogger() {
    delete impl_;
}

void CrisisLogger::log(const char* message) {
    impl_->log(message);
}

} // namespace ZOL::Framework::CrisisLogging
