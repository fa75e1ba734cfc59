// How the compact window comes up and closes, and the commands that concern the program and not the list.

#include "compact/Audiotool.h"
#include "compact/AudiotoolMenus.h"
#include "engine/OutputFormats.h"
#include "engine/StopCommands.h"
#include "platform/Dialogs.h"
#include "platform/Values.h"
#include "shell/ForcedEnd.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"
#include "shell/widgets/LanguageChoice.h"
#include "shell/widgets/ShellMenu.h"
#include "tags/TagEditorial.h"

#include <QAction>
#include <QCloseEvent>
#include <QPushButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// What an early version saved for Mp3.
constexpr QStringView EarlyMp3 = u"AAC";

void Helpus_Click() {
    // The domain is reserved for examples: whoever publishes the program puts the real address here.
    Dialogs().ShowMessage(
        u"If you want to translate Sonmira in your natural language, take the english file in the Lang "
        u"directory of Sonmira and translate it contents. Send your translated file at "
        u"translations@sonmira.example\nThanks."_s,
        MessageIcon::Information, u"Sonmira"_s);
}

}  // namespace

void Audiotool::ConnectShellCommands() {
    const auto command = [this](QAction* action, auto handler) {
        OnEvent(action, &QAction::triggered, this, handler);
    };
    // The button does nothing during a run; the menu leaves it to the close to refuse, which saves first.
    OnEvent(Controls.CmdQuit, &QPushButton::clicked, this, [this] {
        if (!ThisRun.Busy()) close();
    });
    command(Controls.Exite, [this] { close(); });
    command(Controls.TagEditor, [this] { TagEditorial(this).exec(); });
    command(Controls.trackcolor, [this] { trackcolor_Click(); });
    command(Controls.Helpus, [] { Helpus_Click(); });
    ConnectShellMenu(*this,
                     {Controls.acceptWma, Controls.aide, Controls.FAQ, Controls.Homepage, Controls.about});
    ConnectLanguageMenu(Languages, [this](const QString& path) { ApplyLanguage(path, Controls); });
}

void Audiotool::Form_Load() {
    setWindowTitle(ProgramTitle());
    Languages.FillLanguageMenu();
    TrackColor = SavedTrackColour();
    // Strictly a number: a picker that was closed without a choice ends the program here.
    const int place = ToInteger16(SavedLanguagePlace(*this));
    if (place <= Languages.HighestIndex()) {
        ApplyLanguagePlace(Languages, place, [this](const QString& path) { ApplyLanguage(path, Controls); });
    }
    // A run without a format would write nothing and call every file converted.
    if (!Output.LoadSettings(EarlyMp3)) FormatSelector.SelectFormat(FormatName::Wav.toString());
}

void Audiotool::trackcolor_Click() {
    const auto rgb = Dialogs().ChooseColour(ColourOf(TrackColor).rgb() & RGB_MASK);
    if (!rgb) return;
    // Rows that are in the list keep their colour.
    TrackColor = ColourNumber(*rgb);
    SaveTrackColour(TrackColor);
}

void Audiotool::closeEvent(QCloseEvent* event) {
    GuardEvent([&] {
        bool cancel = false;
        Form_QueryUnload(cancel);
        event->setAccepted(!cancel);
        if (!cancel) Form_Unload();
    });
}

void Audiotool::Form_QueryUnload(bool& cancel) {
    Output.Keep();
    if (ThisRun.Busy()) {
        cancel = true;
        return;
    }
    // The program ends here, at once; what follows is reached only where another instance was hit, or none.
    KillProcessByName(u"audiotool"_s);
}

void Audiotool::Form_Unload() {
    LameEncoder::ShowNotice(this);
    // What still adds or removes, and a run that has not accepted a file yet, ends at its next step.
    Closed = true;
    CancelByClosing(ThisRun);
}

}  // namespace Sonmira
