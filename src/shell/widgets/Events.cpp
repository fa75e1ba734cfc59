#include "shell/widgets/Events.h"

#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Processes.h"
#include "platform/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString NumberAndText(const Failure& failure) {
    return PlainNumber(failure.Number) + u" : "_s + failure.Description;
}

}  // namespace

void ShowFailureBox(const Failure& failure) {
    Dialogs().ShowMessage(NumberAndText(failure) + u"\nPlease re-install the application."_s,
                          MessageIcon::Critical, u"Sonmira"_s);
}

void ReportUncaughtFailure(const Failure& failure) {
    Dialogs().ShowMessage(u"Run-time error "_s + NumberAndText(failure), MessageIcon::Critical, u"Sonmira"_s);
    ProgramEnd()();
}

std::function<void()>& ProgramEnd() {
    static std::function<void()> end = [] { EndProcessNow(1); };
    return end;
}

}  // namespace Sonmira
