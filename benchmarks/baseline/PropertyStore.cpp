#include <map>

#include "Baseline.h"

namespace benchmarks {

namespace {

using namespace ZOL::Framework::Management;

class MapPropertyStore final : public PropertyManager {
public:
    const WideString& readProperty(const WideString& name) const override {
        return properties_.at(name);
    }
    bool hasProperty(const WideString& name) const override {
        return properties_.find(name) != properties_.end();
    }
    void setProperty(const WideString& name, const WideString& value) override {
        properties_[name] = value;
    }
    void clearProperty(const WideString& name) override { properties_.erase(name); }

private:
    std::map<WideString, WideString> properties_;
};

} // namespace

PropertyManager& propertyStore() {
    static MapPropertyStore store;
    return store;
}

} // namespace benchmarks
