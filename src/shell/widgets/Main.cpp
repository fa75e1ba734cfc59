#include "shell/widgets/Main.h"

#include "shell/Settings.h"
#include "shell/widgets/Deb.h"

#include <QCoreApplication>

namespace Sonmira {

std::unique_ptr<QWidget> Main(const std::function<std::unique_ptr<QWidget>()>& loadMainWindow) {
    LocateSettingsFile();
    Deb::Instance().show();
    QCoreApplication::processEvents();  // so that the logo paints
    std::unique_ptr<QWidget> window = loadMainWindow();
    window->show();
    return window;
}

}  // namespace Sonmira
