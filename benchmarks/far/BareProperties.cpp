#include "BareProperties.h"

#include <map>

namespace benchmarks {

namespace {

using namespace ZOL::Framework::Management;

class BareProperties final : public PropertyManager {
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

PropertyManager& bareProperties() {
    static BareProperties properties;
    return properties;
}

} // namespace benchmarks
