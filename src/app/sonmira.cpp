#include "platform/widgets/DesktopSignals.h"
#include "platform/widgets/QtDialogs.h"
#include "shell/widgets/Main.h"
#include "ui/BatchConverter.h"
#include "ui/Theme.h"

#include <QApplication>

int main(int /*argc*/, char** argv) {
    using namespace Sonmira;
    int onlyTheName = 1;  // no argument is read, the toolkit's own neither
    QApplication application(onlyTheName, argv);
    QApplication::setApplicationName(QStringLiteral("Sonmira"));
    QApplication::setApplicationVersion(QString::fromUtf16(SONMIRA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("sonmira"));
    ApplyTheme(application);
    InstallQtDialogs();
    InstallDesktopSignals(QStringLiteral("sonmira"));
    const std::unique_ptr<QWidget> window = Main([] { return std::make_unique<BatchConverter>(); });
    return QApplication::exec();
}
