#include "host/Comparison.h"

#include <sstream>

#include "DemoModules.h"
#include "shared/MessageCounts.h"
#include "shared/Properties.h"
#include "shared/WideText.h"

using ZOL::Framework::Management::WideString;

namespace Demo {

namespace {

std::string textOf(const void* address) {
    std::ostringstream text;
    text << address;
    return text.str();
}

std::string textOf(int number) {
    return std::to_string(number);
}

std::string textOf(const WideString* property) {
    return narrow(*property);
}

/// @param seen gives what is compared, from a view.
template <typename Seen>
Comparison comparison(const char* name, const Views& views, Seen seen) {
    Comparison row{name,
                   textOf(seen(views.byHost)),
                   textOf(seen(views.byReader)),
                   textOf(seen(views.byAuditor)),
                   "",
                   false};
    row.passed = row.byHost == row.byReader && row.byHost == row.byAuditor;
    row.verdict = row.passed ? "same" : "DIFFERENT";
    return row;
}

Comparison positionsMadeIn(const Views& views) {
    const int host = views.byHost.positionsMade;
    const int reader = views.byReader.positionsMade;
    const int auditor = views.byAuditor.positionsMade;
    const bool passed = host + reader + auditor == 1;
    return {"  factory runs",
            textOf(host),
            textOf(reader),
            textOf(auditor),
            passed ? "made once" : "NOT MADE ONCE",
            passed};
}

} // namespace

std::vector<ComparisonGroup> compare(const Views& views) {
    return {
        {"Loggers",
         {comparison(readerLoggerName, views, [](const View& view) { return view.readerLogger; }),
          comparison(auditorLoggerName, views,
                     [](const View& view) { return view.auditorLogger; })}},
        {"Counters",
         {comparison(messageCounterName, views,
                     [](const View& view) { return view.messages.counter; }),
          comparison("  value", views, [](const View& view) { return view.messages.value; }),
          comparison(alertCounterName, views, [](const View& view) { return view.alerts.counter; }),
          comparison("  value", views, [](const View& view) { return view.alerts.value; })}},
        {"Named object",
         {comparison(positionName, views, [](const View& view) { return view.position; }),
          positionsMadeIn(views)}},
        {"Properties",
         {comparison(alertLevelProperty, views, [](const View& view) { return view.alertLevel; }),
          comparison(lineEndProperty, views, [](const View& view) { return view.lineEnd; })}},
    };
}

} // namespace Demo
