#include "shell/widgets/ShellMenu.h"

#include "kit/Icons.h"
#include "platform/Dialogs.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

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

QString ProgramTitle() {
    const QStringList version = QCoreApplication::applicationVersion().split(u'.');
    return u"Sonmira V"_s + version.value(0) + u'.' + version.value(1);
}

void ShowAbout(QWidget* owner) {
    constexpr int Height = 2565 / 15;  // twips to pixels
    QDialog about(owner);
    about.setObjectName(u"About"_s);
    about.setWindowTitle(u"Sonmira"_s);
    auto* logo = new QLabel(&about);
    logo->setPixmap(OwnIcon(u"logo").pixmap(QSize(120, 60), about.devicePixelRatioF()));
    logo->setAccessibleName(u"Sonmira"_s);
    auto* version = new QLabel(u"Version "_s + QCoreApplication::applicationVersion(), &about);
    version->setObjectName(u"LabelVersion"_s);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &about);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &about, &QDialog::reject);
    auto* column = new QVBoxLayout(&about);
    column->addWidget(logo, 0, Qt::AlignCenter);
    column->addWidget(version, 0, Qt::AlignCenter);
    column->addWidget(buttons);
    about.setFixedHeight(std::max(Height, about.sizeHint().height()));
    about.exec();
}

}  // namespace Sonmira
