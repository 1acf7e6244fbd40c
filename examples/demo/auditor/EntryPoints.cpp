#include "DemoModules.h"
#include "auditor/Auditor.h"

namespace Demo {

Auditor* demoAuditorStart() {
    return new Auditor;
}

void demoAuditorStop(Auditor* auditor) {
    delete auditor;
}

void demoAuditorCheck(Auditor* auditor, const char* text, std::size_t length) {
    auditor->check({text, length});
}

void demoAuditorFinish(Auditor* auditor) {
    auditor->finish();
}

void demoAuditorTotals(const Auditor* auditor, AuditTotals* totals) {
    *totals = auditor->totals();
}

void demoAuditorView(View* view) {
    *view = viewOfThisSide();
}

} // namespace Demo
