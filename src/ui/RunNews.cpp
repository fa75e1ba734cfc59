#include "ui/RunNews.h"

#include "engine/RunView.h"
#include "platform/widgets/DesktopSignals.h"
#include "shell/LanguageFiles.h"

#include <QApplication>
#include <QWidget>

namespace Sonmira {

using namespace Qt::StringLiterals;

void RunNews::Begin() {
    Title = Window.windowTitle();
    Clock.start();
    Runs = true;
    Done = Total = InHand = 0;
    Told = -1;
    TrashText.clear();
}

void RunNews::Count(int done, int total) {
    Done = done;
    Total = total;
    InHand = 0;
    Tell();
}

void RunNews::Progress(int percent) {
    // At the end of a file its progress goes back to nothing, before the count goes on.
    InHand = qMax(InHand, qBound(0, percent, 100));
    Tell();
}

void RunNews::Tell() {
    if (!Runs || Total <= 0) return;
    const int percent = qBound(0, (Done * 100 + (Done < Total ? InHand : 0)) / Total, 100);
    if (percent == Told) return;
    Told = percent;
    Window.setWindowTitle(u"%1 % - %2"_s.arg(QString::number(percent), Title));
    Desktop().ShowProgress(percent / 100.0);
}

void RunNews::End() {
    Runs = false;
    Window.setWindowTitle(Title);
    Desktop().HideProgress();
    if (Clock.elapsed() < Long || Window.isActiveWindow()) return;
    const QString word = Done < Total ? LanguageLineOr(LanguageLine::Stopped, u"Stopped"_s)
                                      : LanguageLineOr(LanguageLine::Converted, u"Converted"_s);
    QString text = word + u": "_s + CountText(Done, Total);
    if (!TrashText.isEmpty()) text += u'\n' + TrashText;
    Desktop().Notify(u"Sonmira"_s, text);
    QApplication::alert(&Window);
}

}  // namespace Sonmira
