#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "ZOL/Framework/Framework.h"

#include "../far/BareProperties.h"
#include "RowFiles.h"

using namespace ZOL::Framework::Management;

namespace benchmarks {

namespace {

WideString widened(const std::string& text) {
    return WideString(text.begin(), text.end());
}

template <std::size_t count>
const std::vector<WideString>& names() {
    static const std::vector<WideString> names = [] {
        std::vector<WideString> made;
        made.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            made.push_back(widened("orders.page." + std::to_string(100000 + i)));
        }
        std::shuffle(made.begin(), made.end(), std::minstd_rand());
        return made;
    }();
    return names;
}

/// Names in an order that is as good as random, and too long for a processor to foresee it.
template <std::size_t count>
const std::vector<const WideString*>& order() {
    static const std::vector<const WideString*> order = [] {
        constexpr std::size_t length = 50000;
        std::vector<const WideString*> made;
        made.reserve(length);
        std::minstd_rand random;
        for (std::size_t i = 0; i < length; ++i) {
            made.push_back(&names<count>()[random() % count]);
        }
        return made;
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

constexpr Work has10 = {"hasProperty, among 10", 1000};
constexpr Work has1000 = {"hasProperty, among 1000", 1000};
constexpr Work has100000 = {"hasProperty, among 100000", 1000};
constexpr Work read10 = {"readProperty, among 10", 1000};
constexpr Work read1000 = {"readProperty, among 1000", 1000};
constexpr Work read100000 = {"readProperty, among 100000", 1000};
constexpr Work set10 = {"setProperty of a name that is there, among 10", 1000};
constexpr Work set1000 = {"setProperty of a name that is there, among 1000", 1000};
constexpr Work set100000 = {"setProperty of a name that is there, among 100000", 1000};

template <std::size_t count>
constexpr Row floorRow(const Work& work, void (*run)(std::size_t)) {
    return {work,
            Role::Floor,
            floorName,
            run,
            fill<bareProperties, count>,
            clear<bareProperties, count>};
}

template <std::size_t count>
constexpr Row productRow(const Work& work, void (*run)(std::size_t)) {
    return {work, Role::Product, productName, run, fill<product, count>, clear<product, count>};
}

const Row rows[] = {
    floorRow<10>(has10, runHas<bareProperties, 10>),
    productRow<10>(has10, runHas<product, 10>),
    floorRow<1000>(has1000, runHas<bareProperties, 1000>),
    productRow<1000>(has1000, runHas<product, 1000>),
    floorRow<100000>(has100000, runHas<bareProperties, 100000>),
    productRow<100000>(has100000, runHas<product, 100000>),
    floorRow<10>(read10, runRead<bareProperties, 10>),
    productRow<10>(read10, runRead<product, 10>),
    floorRow<1000>(read1000, runRead<bareProperties, 1000>),
    productRow<1000>(read1000, runRead<product, 1000>),
    floorRow<100000>(read100000, runRead<bareProperties, 100000>),
    productRow<100000>(read100000, runRead<product, 100000>),
    floorRow<10>(set10, runSet<bareProperties, 10>),
    productRow<10>(set10, runSet<product, 10>),
    floorRow<1000>(set1000, runSet<bareProperties, 1000>),
    productRow<1000>(set1000, runSet<product, 1000>),
    floorRow<100000>(set100000, runSet<bareProperties, 100000>),
    productRow<100000>(set100000, runSet<product, 100000>),
};

} // namespace

Rows propertyRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
