#include "ProductLogger.h"

#include "ZOL/Framework/Management/MemoryManager.h"

#include "../backend/Discarded.h"

using ZOL::Framework::GenericLogger::Logger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

Logger* productLogger() {
    static Logger* const logger = [] {
        Logger::installBackend("BenchmarkDiscard");
        return Logger::getLogger("benchmarks");
    }();
    return logger;
}

FarSide& productFarSide() {
    productLogger();
    return *static_cast<FarSide*>(MemoryManager::findObject(discardedName));
}

} // namespace benchmarks
