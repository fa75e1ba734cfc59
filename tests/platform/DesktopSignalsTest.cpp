// What is told to the desktop, heard by a listener on a bus of the test's own.
#include "platform/widgets/DesktopSignals.h"
#include "support/WindowWaiting.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Every call and signal that reaches one connection.
class Listener : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        Heard.append(message);
        connection.send(message.createReply(QVariant(1U)));
        return true;
    }

    QList<QDBusMessage> Heard;
};

class Launcher : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void Update(const QString& program, const QVariantMap& values) {
        Programs.append(program);
        Values.append(values);
    }

public:
    QStringList Programs;
    QList<QVariantMap> Values;
};

class DesktopBus : public ::testing::Test {
protected:
    DesktopBus() {
        Daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        if (Daemon.waitForStarted(LongestWait.count()) && Daemon.waitForReadyRead(LongestWait.count())) {
            Address = QString::fromUtf8(Daemon.readLine()).trimmed();
            qputenv("DBUS_SESSION_BUS_ADDRESS", Address.toUtf8());
        }
    }
    ~DesktopBus() override {
        Desktop() = {};
        QDBusConnection::disconnectFromBus(u"listener"_s);
        QDBusConnection::disconnectFromBus(QDBusConnection::sessionBus().name());
        Daemon.kill();
        Daemon.waitForFinished();
    }

    QProcess Daemon;
    QString Address;
};

TEST_F(DesktopBus, HearsOfProgressAndOfNews) {
    ASSERT_FALSE(Address.isEmpty()) << "no bus could be started";
    QDBusConnection bus = QDBusConnection::connectToBus(Address, u"listener"_s);
    ASSERT_TRUE(bus.isConnected());
    Launcher launcher;
    ASSERT_TRUE(bus.connect({}, {}, u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s, &launcher,
                            SLOT(Update(QString, QVariantMap))));
    Listener notifications;
    ASSERT_TRUE(bus.registerVirtualObject(u"/org/freedesktop/Notifications"_s, &notifications));
    ASSERT_TRUE(bus.registerService(u"org.freedesktop.Notifications"_s));

    InstallDesktopSignals(u"sonmira"_s);
    Desktop().ShowProgress(0.25);
    Desktop().HideProgress();
    Desktop().Notify(u"Sonmira"_s, u"Converted: <3> / 3"_s);
    ASSERT_TRUE(Becomes([&] { return launcher.Values.size() == 2 && !notifications.Heard.isEmpty(); }));

    EXPECT_EQ(launcher.Programs.first(), u"application://sonmira.desktop"_s);
    EXPECT_EQ(launcher.Values[0].value(u"progress"_s).toDouble(), 0.25);
    EXPECT_TRUE(launcher.Values[0].value(u"progress-visible"_s).toBool());
    EXPECT_FALSE(launcher.Values[1].value(u"progress-visible"_s).toBool());
    const QDBusMessage& news = notifications.Heard.first();
    EXPECT_EQ(news.member(), u"Notify"_s);
    EXPECT_EQ(news.signature(), u"susssasa{sv}i"_s);
    EXPECT_EQ(news.arguments()[2].toString(), u"sonmira"_s);
    EXPECT_EQ(news.arguments()[3].toString(), u"Sonmira"_s);
    EXPECT_EQ(news.arguments()[4].toString(), u"Converted: &lt;3&gt; / 3"_s) << "the text is read as markup";
}

TEST_F(DesktopBus, WithoutAListenerNothingHappens) {
    InstallDesktopSignals(u"sonmira"_s);
    Desktop().Notify(u"Sonmira"_s, u"nobody"_s);
    Desktop().ShowProgress(1);
    QTest::qWait(50);  // for a failure that comes by an event, which a busy machine may show too late
}

TEST(DesktopSignals, AreSilentWithoutABus) {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    InstallDesktopSignals(u"sonmira"_s);
    Desktop().ShowProgress(0.5);
    Desktop().Notify(u"Sonmira"_s, u"nobody"_s);
    Desktop() = {};
}

}  // namespace
}  // namespace Sonmira

#include "DesktopSignalsTest.moc"
