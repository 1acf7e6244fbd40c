#include <cstdio>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/StringHolder.h"

int main() {
    ZOL::Framework::StringHolder text("counted to ");
    text += "two: ";
    ZOL::Framework::Counting::Counter& counter =
        ZOL::Framework::Counting::Counter::counter("pkg-config");
    const int first = counter.next();
    std::printf("%s%d\n", text.c_str(), counter.next() - first);
}
