#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "ZOL/Framework/Framework.h"

#include "../baseline/Baseline.h"
#include "Rows.h"

using namespace ZOL::Framework::Management;

namespace benchmarks {

namespace {

WideString widened(const std::string& text) {
    return WideString(text.begin(), text.end());
}

template <std::size_t count>
const std::vector<WideString>& names() {
    static const std::vector<WideString> names = [] {
        std::vector<WideString> result;
        result.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            result.push_back(widened("orders.page." + std::to_string(100000 + i)));
        }
        std::shuffle(result.begin(), result.end(), std::minstd_rand());
        return result;
    }();
    return names;
}

/// Names in a random order that is too long for branch prediction to learn.
template <std::size_t count>
const std::vector<const WideString*>& order() {
    static const std::vector<const WideString*> order = [] {
        constexpr std::size_t length = 50000;
        std::vector<const WideString*> result;
        result.reserve(length);
        std::minstd_rand random;
        for (std::size_t i = 0; i < length; ++i) {
            result.push_back(&names<count>()[random() % count]);
        }
        return result;
    }();
    return order;
}

template <std::size_t count, typename Use>
void inTurn(std::size_t n, Use&& use) {
    const std::vector<const WideString*>& all = order<count>();
    static std::size_t next = 0;
    for (std::size_t i = 0; i < n; ++i) {
        use(*all[next]);
        next = next + 1 == all.size() ? 0 : next + 1;
    }
}

const WideString value = widened("a value of 24 characters");

PropertyManager& product() {
    return *ZOL::Framework::Framework::propertyManager();
}

using Store = PropertyManager& (*)();

template <Store store, std::size_t count>
void fill() {
    for (const WideString& name : names<count>()) {
        store().setProperty(name, value);
    }
}

template <Store store, std::size_t count>
void clear() {
    for (const WideString& name : names<count>()) {
        store().clearProperty(name);
    }
}

template <Store store, std::size_t count>
void runHas(std::size_t n) {
    const PropertyManager& properties = store();
    inTurn<count>(n, [&](const WideString& name) { keep(properties.hasProperty(name)); });
}

template <Store store, std::size_t count>
void runRead(std::size_t n) {
    const PropertyManager& properties = store();
    inTurn<count>(n, [&](const WideString& name) { keep(properties.readProperty(name)); });
}

template <Store store, std::size_t count>
void runSet(std::size_t n) {
    PropertyManager& properties = store();
    inTurn<count>(n, [&](const WideString& name) { properties.setProperty(name, value); });
}

template <Store store, std::size_t count>
Row row(const char* workload, void (*run)(std::size_t)) {
    const bool isProduct = store == product;
    return {{workload, 1000},
            isProduct ? Role::Product : Role::Floor,
            isProduct ? productName : floorName,
            run,
            fill<store, count>,
            clear<store, count>};
}

} // namespace

std::vector<Row> propertyRows() {
    return {
        row<propertyStore, 10>("hasProperty, among 10", runHas<propertyStore, 10>),
        row<product, 10>("hasProperty, among 10", runHas<product, 10>),
        row<propertyStore, 1000>("hasProperty, among 1000", runHas<propertyStore, 1000>),
        row<product, 1000>("hasProperty, among 1000", runHas<product, 1000>),
        row<propertyStore, 100000>("hasProperty, among 100000", runHas<propertyStore, 100000>),
        row<product, 100000>("hasProperty, among 100000", runHas<product, 100000>),
        row<propertyStore, 10>("readProperty, among 10", runRead<propertyStore, 10>),
        row<product, 10>("readProperty, among 10", runRead<product, 10>),
        row<propertyStore, 1000>("readProperty, among 1000", runRead<propertyStore, 1000>),
        row<product, 1000>("readProperty, among 1000", runRead<product, 1000>),
        row<propertyStore, 100000>("readProperty, among 100000", runRead<propertyStore, 100000>),
        row<product, 100000>("readProperty, among 100000", runRead<product, 100000>),
        row<propertyStore, 10>("setProperty of a name that is there, among 10",
                               runSet<propertyStore, 10>),
        row<product, 10>("setProperty of a name that is there, among 10", runSet<product, 10>),
        row<propertyStore, 1000>("setProperty of a name that is there, among 1000",
                                 runSet<propertyStore, 1000>),
        row<product, 1000>("setProperty of a name that is there, among 1000",
                           runSet<product, 1000>),
        row<propertyStore, 100000>("setProperty of a name that is there, among 100000",
                                   runSet<propertyStore, 100000>),
        row<product, 100000>("setProperty of a name that is there, among 100000",
                             runSet<product, 100000>),
    };
}

} // namespace benchmarks
