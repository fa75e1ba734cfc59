// What the main window has of the shell: language, help, web pages, WMA support, and how it closes.

#include "engine/StopCommands.h"
#include "shell/ForcedEnd.h"
#include "shell/widgets/About.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/MinMaxInfo.h"
#include "shell/widgets/ShellMenu.h"
#include "ui/BatchConverter.h"
#include "ui/LanguageTargets.h"

#include <QAction>
#include <QCloseEvent>

namespace Sonmira {

using namespace Qt::StringLiterals;

void BatchConverter::ConnectShellCommands() {
    OnEvent(Controls.Quit, &QAction::triggered, this, [this] {
        if (!ThisRun.Busy()) close();
    });
    ConnectShellMenu(*this,
                     {Controls.acceptWma, Controls.aide, Controls.FAQ, Controls.Homepage, Controls.about});
    OnEvent(Controls.ToolbarButton(8), &QAction::triggered, this, [this] { ShowAbout(this); });
    ConnectLanguageMenu(Languages, [this](const QString& path) { ApplyLanguage(path, Controls); });
}

void BatchConverter::closeEvent(QCloseEvent* event) {
    GuardEvent([&] {
        bool cancel = false;
        Form_QueryUnload(cancel);
        event->setAccepted(!cancel);
        if (!cancel) Form_Unload();
    });
}

void BatchConverter::Form_QueryUnload(bool& cancel) {
    Output.Keep();
    if (ThisRun.Busy()) {
        cancel = true;
        return;
    }
    UnhookMinMaxInfo(*this);
    // The program ends here, at once; what follows is reached only where another instance was hit, or none.
    KillProcessByName(u"sonmira"_s);
}

void BatchConverter::Form_Unload() {
    // An odd farewell, shown whether or not the encoder is there. It has always been so.
    LameEncoder::ShowNotice(this);
    // A scan, or a run that has not accepted a file yet, ends at its next step instead of going on behind a
    // window that is gone.
    Items.StopScan = true;
    CancelByClosing(ThisRun);
}

}  // namespace Sonmira
