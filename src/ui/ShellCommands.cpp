// What the main window has of the shell: language, help, web pages, WMA support, and how it closes.

#include "formats/OutputPanel.h"
#include "platform/Dialogs.h"
#include "shell/ForcedEnd.h"
#include "shell/LanguageFiles.h"
#include "shell/Launches.h"
#include "shell/Settings.h"
#include "shell/Values.h"
#include "shell/widgets/About.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"
#include "shell/widgets/MinMaxInfo.h"
#include "ui/BatchConverter.h"
#include "ui/LanguageTargets.h"

#include <QAction>
#include <QCloseEvent>
#include <QToolBar>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int WmaSupportMessageLine = 48;

}  // namespace

void BatchConverter::ConnectShellCommands() {
    const auto command = [this](QAction* action, auto handler) {
        OnEvent(action, &QAction::triggered, this, handler);
    };
    command(Controls.Quit, [this] {
        if (!Run.Busy) close();
    });
    command(Controls.acceptWma, [this] { acceptWma_Click(); });
    command(Controls.aide, [] { OpenHelp(); });
    command(Controls.FAQ, [] { OpenQuestions(); });
    command(Controls.Homepage, [] { OpenHomePage(); });
    command(Controls.about, [this] { about_Click(); });
    command(Controls.ToolbarButton(8), [this] { about_Click(); });
    OnEvent(&Languages, &LanguageMenu::LangueNameClick, this, [this](int index) { LangueName_Click(index); });
}

void BatchConverter::about_Click() {
    ShowAbout(this);
}

void BatchConverter::LangueName_Click(int index) {
    WithFailureBox([&] {
        WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, NumberText(index));
        ApplyLanguageOf(index);
        Languages.UncheckAllBut(index);
    });
}

void BatchConverter::ApplyLanguageOf(int index) {
    Languages.Item(index)->setChecked(true);
    ApplyLanguage(Languages.PathOf(index), Controls);
}

void BatchConverter::acceptWma_Click() {
    WithFailureBox([this] {
        const bool wanted = ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s) != u"True";
        WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, FlagText(wanted));
        Controls.acceptWma->setChecked(wanted);
        // Encoder, decoder and format list stay as they are until the next start.
        Dialogs().ShowMessage(LanguageLines[WmaSupportMessageLine], MessageIcon::Information, u"Sonmira"_s);
    });
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
    const auto keep = [](const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, u"AudioConverter"_s, key, value);
    };
    keep(u"OutputPath"_s, RunShown.TextOutPath());
    keep(u"Modepath"_s, RunShown.CheckOutPath() ? u"TRUE"_s : u"FALSE"_s);
    keep(u"Format"_s, RunShown.ComboOutFormat());
    if (Run.Busy) {
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
    Run.CancelAll = Run.DecodingStopped = true;
}

}  // namespace Sonmira
