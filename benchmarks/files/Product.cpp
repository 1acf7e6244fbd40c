#include <string>
#include <string_view>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "../Subject.h"
#include "Subjects.h"

using ZOL::Framework::Framework;
using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackend;
using ZOL::Framework::Management::WideString;

namespace benchmarks {

namespace {

LoggerBackend* backend = nullptr;

void set(std::string_view name, std::string_view value) {
    Framework::propertyManager()->setProperty(WideString(name.begin(), name.end()),
                                              WideString(value.begin(), value.end()));
}

void open(const char* path, bool isFlushed) {
    set("RotatingFile.path", path);
    set("RotatingFile.size", std::to_string(fileRotationBytes));
    if (!isFlushed) {
        set("RotatingFile.flush", "200ms");
    }
    backend = Logger::installBackend("RotatingFile");
}

void close() {
    Logger::uninstallBackend(backend);
}

struct Product {
    Logger* const logger = Logger::getLogger(fileLogger);

    void logText() { logger->info(fortyCharacters); }
};

} // namespace

FileSubject fileProduct() {
    return {open, logTimed<Product>, close};
}

} // namespace benchmarks
