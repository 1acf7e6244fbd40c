#pragma once

#include "ZOL/Framework/Management/PropertyManager.h"

#include "../ByteCounter.h"

// What the floors call. It is a module of its own, so that a floor pays for the same module
// boundary as a user of the product. Of the product it uses one interface, and nothing of its
// module.
#if !defined(_WIN32)
#define BENCHMARKS_BASELINE __attribute__((visibility("default")))
#elif defined(BENCHMARKS_BASELINE_BUILD)
#define BENCHMARKS_BASELINE __declspec(dllexport)
#else
#define BENCHMARKS_BASELINE __declspec(dllimport)
#endif

namespace benchmarks {

/// Discards texts, as a channel of the discarding back end does.
class Sink {
public:
    virtual ~Sink() = default;
    virtual void log(int level, const char* text) = 0;
    virtual ByteCounter& counter() = 0;
};

/// Returns a sink for a name, as the discarding back end does.
class SinkFactory {
public:
    virtual ~SinkFactory() = default;
    virtual Sink* createSink(const char* name) = 0;
};

/// The only instances.
BENCHMARKS_BASELINE Sink& sink();
BENCHMARKS_BASELINE SinkFactory& sinkFactory();

/// A std::map under the virtual operations of the product's store; the only instance.
BENCHMARKS_BASELINE ZOL::Framework::Management::PropertyManager& propertyStore();

/// Objects by name in an ordered map and in a hash table, under one recursive lock.
class NameTable {
public:
    BENCHMARKS_BASELINE static void insert(const char* name);
    BENCHMARKS_BASELINE static void* findInMap(const char* name);
    BENCHMARKS_BASELINE static void* findInHashTable(const char* name);
};

/// Objects by name in an ordered map under a plain lock.
class ObjectTable {
public:
    BENCHMARKS_BASELINE static void insert(const char* name, void* object);
    BENCHMARKS_BASELINE static void* find(const char* name);
};

/// A minimum level, reached through a pointer as in a class with a private block.
class Level {
public:
    explicit Level(int minimum) : minimum_(new int(minimum)) {}
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { delete minimum_; }

    BENCHMARKS_BASELINE bool isActive(int level) const;

private:
    int* minimum_;
};

/// A counter without a lock.
class PlainCounter {
public:
    BENCHMARKS_BASELINE int next();

private:
    int value_ = 0;
};

/// The product's random generator on this platform, under a lock.
BENCHMARKS_BASELINE unsigned int lockedRandom();

} // namespace benchmarks
