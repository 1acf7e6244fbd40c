#include "shared/MessageCounts.h"

#include "shared/Levels.h"
#include "shared/Properties.h"
#include "shared/WideText.h"

using ZOL::Framework::Counting::Counter;
using ZOL::Framework::GenericLogger::LoggingLevel;

namespace Demo {

MessageCounts::MessageCounts()
    : messages_(Counter::counter(messageCounterName)),
      alerts_(Counter::counter(alertCounterName)),
      alertLevel_(levelNamed(narrow(readProperty(alertLevelProperty)))) {}

void MessageCounts::count(LoggingLevel level) {
    messages_.next();
    if (level >= alertLevel_) {
        alerts_.next();
    }
}

} // namespace Demo
