#include "Baseline.h"

namespace benchmarks {

namespace {

class DiscardSink final : public Sink {
public:
    void log(int, const char* text) override { counter_.add(text); }
    ByteCounter& counter() override { return counter_; }

private:
    ByteCounter counter_;
};

class DiscardSinkFactory final : public SinkFactory {
public:
    Sink* createSink(const char*) override { return &sink(); }
};

} // namespace

Sink& sink() {
    static DiscardSink sink;
    return sink;
}

SinkFactory& sinkFactory() {
    static DiscardSinkFactory factory;
    return factory;
}

} // namespace benchmarks
