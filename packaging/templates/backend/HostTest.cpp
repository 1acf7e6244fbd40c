// A host: logs through MyBackend and checks the file.

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace {

const std::string path = "host_test.log";

void set(const std::string& name, const std::string& value) {
    Framework::propertyManager()->setProperty(WideString(name.begin(), name.end()),
                                              WideString(value.begin(), value.end()));
}

void logAFewLines() {
    set("MyBackend.path", path);
    Logger::getLogger("orders")->info() << "kept until the back end is there";
    Logger::installBackend("MyBackend");
    Logger::getLogger("orders")->warning() << "stock is low: " << 3;
}

bool isAsExpected() {
    std::ifstream file(path);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    const std::string expected = "orders 30 kept until the back end is there\n"
                                 "orders 40 stock is low: 3\n";
    if (content != expected) {
        std::cerr << path << " has\n" << content << "instead of\n" << expected;
    }
    return content == expected;
}

} // namespace

int main() {
    try {
        std::remove(path.c_str());
        logAFewLines();
        return isAsExpected() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
