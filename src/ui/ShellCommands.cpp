#include "engine/OutputFormats.h"
#include "engine/StopCommands.h"
#include "platform/Processes.h"
#include "platform/Values.h"
#include "shell/ForcedEnd.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/ShellMenu.h"
#include "shell/widgets/WindowMeasures.h"
#include "ui/BatchConverter.h"
#include "ui/LanguageTargets.h"
#include "ui/MainWindowLayout.h"

#include <QAction>
#include <QCloseEvent>

namespace Sonmira {

using namespace Qt::StringLiterals;

// What the main window has of the shell: language, help, web pages, WMA support, and how it closes.

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

// How the main window comes up: its texts, the empty collection and what the settings file remembers.

namespace {

// The place in the language menu that is taken for one run when the picker was closed without a choice.
constexpr QStringView PlaceWithoutChoice = u"6";

}  // namespace

void BatchConverter::Form_Load() {
    setWindowTitle(ProgramTitle());
    const QSizeF least = LeastSizeOf(*this);
    HookMinMaxInfo(*this, least.width(), least.height());
    Languages.FillLanguageMenu();
    CreateNamedMutex(u"Tolvane_SonmiraPack");
    CreateNamedMutex(u"Global\\Tolvane_SonmiraPack");
    ChooseLanguage();
    TagPage.AddGenres();
    NewConversion();
    // A run without a format would write nothing and remove its sources all the same.
    if (!Output.LoadSettings()) FormatSelector.SelectFormat(FormatName::Wav.toString());
    TagPage.UseVersion1();
}

void BatchConverter::ChooseLanguage() {
    QString place = SavedLanguagePlace(*this);
    if (place.isEmpty()) place = PlaceWithoutChoice.toString();
    const int index = ToInteger16(LeadingNumber(place));
    // Without a file at that place the design captions stay, and nothing is loaded at all.
    if (index > Languages.HighestIndex()) return;
    ApplyLanguagePlace(Languages, index, [this](const QString& path) { ApplyLanguage(path, Controls); });
}

}  // namespace Sonmira
