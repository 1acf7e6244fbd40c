#pragma once

#include <map>

#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/Management/UnitOrder.h"

namespace ZOL::Framework::Management {

class PropertyManagerImpl final : public PropertyManager {
public:
    ~PropertyManagerImpl() override = default;

    const WideString& readProperty(const WideString& name) const override;
    bool hasProperty(const WideString& name) const override;
    void setProperty(const WideString& name, const WideString& value) override;
    void clearProperty(const WideString& name) override;

private:
    std::map<WideString, WideString, UnitOrder> properties_;
};

} // namespace ZOL::Framework::Management
