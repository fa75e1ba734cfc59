#include "shell/widgets/ShellMenu.h"

#include "platform/Dialogs.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"
#include "shell/Launches.h"
#include "shell/Settings.h"
#include "shell/widgets/About.h"
#include "shell/widgets/Events.h"

#include <QAction>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

void acceptWma_Click(QAction& acceptWma) {
    WithFailureBox([&] {
        const bool wanted = ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s) != u"True";
        WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, FlagText(wanted));
        acceptWma.setChecked(wanted);
        // Encoder, decoder and format list stay as they are until the next start.
        Dialogs().ShowMessage(LanguageLines[LanguageLine::AfterRestart], MessageIcon::Information,
                              u"Sonmira"_s);
    });
}

}  // namespace

void ConnectShellMenu(QWidget& window, const ShellMenu& menu) {
    const auto command = [&window](QAction* action, auto handler) {
        OnEvent(action, &QAction::triggered, &window, handler);
    };
    command(menu.acceptWma, [acceptWma = menu.acceptWma] { acceptWma_Click(*acceptWma); });
    command(menu.aide, [] { OpenHelp(); });
    command(menu.FAQ, [] { OpenQuestions(); });
    command(menu.Homepage, [] { OpenHomePage(); });
    command(menu.about, [&window] { ShowAbout(&window); });
}

}  // namespace Sonmira
