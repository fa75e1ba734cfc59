#include "platform/widgets/DesktopSignals.h"

#include "platform/Paths.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDropEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>
#include <QVariantMap>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Without this look the library would try to start a bus of its own, which takes its time.
bool HasBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

void Send(const QDBusMessage& message) {
    if (HasBus()) QDBusConnection::sessionBus().send(message);
}

// Docks and task bars that show progress listen to this one.
void SendLauncherUpdate(const QString& program, const QVariantMap& values) {
    QDBusMessage message = QDBusMessage::createSignal(u"/com/canonical/unity/launcherentry/1"_s,
                                                      u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s);
    message << QString(u"application://"_s + program + u".desktop"_s) << values;
    Send(message);
}

void SendNotification(const QString& program, const QString& title, const QString& text) {
    QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                          u"/org/freedesktop/Notifications"_s,
                                                          u"org.freedesktop.Notifications"_s, u"Notify"_s);
    constexpr uint NoOther = 0;
    constexpr int AsLongAsUsual = -1;
    // The text is read as markup.
    message << QGuiApplication::applicationDisplayName() << NoOther << program << title
            << text.toHtmlEscaped() << QStringList() << QVariantMap({{u"desktop-entry"_s, program}})
            << AsLongAsUsual;
    // Sent without waiting for an answer: where there is no such service, it is lost in silence.
    Send(message);
}

}  // namespace

DesktopSignals& Desktop() {
    static DesktopSignals functions;
    return functions;
}

void InstallDesktopSignals(const QString& program) {
    Desktop().ShowProgress = [program](double part) {
        SendLauncherUpdate(program, {{u"progress"_s, part}, {u"progress-visible"_s, true}});
    };
    Desktop().HideProgress = [program] {
        SendLauncherUpdate(program, {{u"progress"_s, 0.0}, {u"progress-visible"_s, false}});
    };
    Desktop().Notify = [program](const QString& title, const QString& text) {
        SendNotification(program, title, text);
    };
}

void AcceptFiles(QDropEvent& drag) {
    if (!drag.mimeData()->hasUrls()) return;
    drag.setDropAction(Qt::CopyAction);
    drag.accept();
}

QStringList DroppedPaths(QDropEvent& drop) {
    QStringList paths;
    for (const QUrl& url : drop.mimeData()->urls()) {
        const QString path = PathFromUrl(url);
        if (!path.isEmpty()) paths.append(path);
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    return paths;
}

}  // namespace Sonmira
