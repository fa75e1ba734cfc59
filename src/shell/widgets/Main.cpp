#include "shell/widgets/Main.h"

#include "platform/Failure.h"
#include "platform/TemporaryFolder.h"
#include "shell/EncoderGate.h"
#include "shell/Settings.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LameEncoder.h"

#include <QCoreApplication>

namespace Sonmira {

std::unique_ptr<QWidget> Main(const std::function<std::unique_ptr<QWidget>()>& loadMainWindow) {
    Deb& logo = Deb::Instance();
    LocateSettingsFile();
    TemporaryFolder();  // made now, so that what an earlier run left is put away before anything new comes
    logo.show();
    QCoreApplication::processEvents();  // so that the logo paints
    if (!IsLameInstalled()) LameEncoder::ShowNotice();
    try {
        std::unique_ptr<QWidget> window = loadMainWindow();
        window->show();
        return window;
    } catch (const Failure& failure) {
        Deb::Unload();  // or it would stand before the report
        ReportUncaughtFailure(failure);
    } catch (const std::exception& error) {
        Deb::Unload();
        ReportUncaughtFailure(Failure(FailureNumber::Component, QString::fromLocal8Bit(error.what())));
    }
    return nullptr;
}

}  // namespace Sonmira
