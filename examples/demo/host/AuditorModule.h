#pragma once

#include <memory>

#include "DemoModules.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace Demo {

/// The module DemoAuditor, with an audit under way.
class AuditorModule {
public:
    /// @param library must outlive the object, and whatever its functions throw.
    explicit AuditorModule(const ZOL::Gadgets::DLL::DLLHolder& library)
        : check_(library.resolve<decltype(demoAuditorCheck)>("demoAuditorCheck")),
          finish_(library.resolve<decltype(demoAuditorFinish)>("demoAuditorFinish")),
          totals_(library.resolve<decltype(demoAuditorTotals)>("demoAuditorTotals")),
          view_(library.resolve<decltype(demoAuditorView)>("demoAuditorView")),
          auditor_(library.resolve<decltype(demoAuditorStart)>("demoAuditorStart")(),
                   library.resolve<decltype(demoAuditorStop)>("demoAuditorStop")) {}

    void check(const Line& line) const { check_(auditor_.get(), line.text, line.length); }
    void finish() const { finish_(auditor_.get()); }

    AuditTotals totals() const {
        AuditTotals totals;
        totals_(auditor_.get(), &totals);
        return totals;
    }

    View view() const {
        View view;
        view_(&view);
        return view;
    }

private:
    decltype(demoAuditorCheck)* check_;
    decltype(demoAuditorFinish)* finish_;
    decltype(demoAuditorTotals)* totals_;
    decltype(demoAuditorView)* view_;
    std::unique_ptr<Auditor, decltype(demoAuditorStop)*> auditor_;
};

} // namespace Demo
