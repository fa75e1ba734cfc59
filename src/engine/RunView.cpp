#include "engine/RunView.h"

#include "platform/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

QString RowNumberText(int number) {
    return FormatNumber(number, u"###000") + u'.';
}

QString PercentText(int percent) {
    return PlainNumber(percent) + u" %"_s;
}

QString CountText(int done, int total) {
    return PlainNumber(done) + u" / "_s + PlainNumber(total);
}

QString FailureText(std::optional<RowFailure> reason) {
    return reason ? LanguageLines[static_cast<int>(*reason)] : QString();
}

bool RunView::UpdateRowPercent(int row, int percent) {
    if (RowProgress(row) == PercentText(percent)) return false;
    SetRowPercent(row, percent);
    return true;
}

}  // namespace Sonmira
