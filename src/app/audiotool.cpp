#include "compact/Audiotool.h"

#include "kit/Icons.h"
#include "platform/widgets/QtDialogs.h"
#include "shell/widgets/Main.h"
#include "ui/Theme.h"

#include <QApplication>

int main(int /*argc*/, char** argv) {
    using namespace Sonmira;
    int onlyTheName = 1;  // no argument is read, the toolkit's own neither
    QApplication application(onlyTheName, argv);
    QApplication::setApplicationName(QStringLiteral("Sonmira"));
    QApplication::setApplicationVersion(QString::fromUtf16(SONMIRA_VERSION));
    ApplyTheme(application);
    QApplication::setWindowIcon(OwnIcon(u"audiotool"));
    InstallQtDialogs();
    const std::unique_ptr<QWidget> window = Main([] { return std::make_unique<Audiotool>(); });
    return QApplication::exec();
}
