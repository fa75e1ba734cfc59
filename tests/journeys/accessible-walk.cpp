// accessible-walk PROGRAM
//
// What assistive tools are told of a running program: each node below it on the accessibility bus, a line
// each, as depth, role and name, parted by tabs. Waits for the program to come to the bus.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QThread>

#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

struct Node {
    QString Service;
    QString Path;
};

constexpr int LongestWait = 300'000;  // milliseconds, for one answer of a busy machine
const QString Accessible = u"org.a11y.atspi.Accessible"_s;

class Walk {
public:
    explicit Walk(QDBusConnection bus) : Bus(std::move(bus)) {}

    QVariant Ask(const Node& node, const QString& interface, const QString& what,
                 const QVariantList& arguments = {}) {
        QDBusMessage call = QDBusMessage::createMethodCall(node.Service, node.Path, interface, what);
        call.setArguments(arguments);
        const QDBusMessage answer = Bus.call(call, QDBus::Block, LongestWait);
        return answer.arguments().isEmpty() || answer.type() == QDBusMessage::ErrorMessage
                   ? QVariant()
                   : answer.arguments().constFirst();
    }
    QString NameOf(const Node& node) {
        const QVariant name =
            Ask(node, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {Accessible, u"Name"_s});
        return name.value<QDBusVariant>().variant().toString();
    }
    QList<Node> ChildrenOf(const Node& node) {
        QList<Node> children;
        const auto list = Ask(node, Accessible, u"GetChildren"_s).value<QDBusArgument>();
        if (list.currentType() != QDBusArgument::ArrayType) return children;
        list.beginArray();
        while (!list.atEnd()) {
            Node child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.Service >> path;
            list.endStructure();
            child.Path = path.path();
            children.append(child);
        }
        list.endArray();
        return children;
    }
    void Print(const Node& node, int depth) {
        const QByteArray role = Ask(node, Accessible, u"GetRoleName"_s).toString().toUtf8();
        std::printf("%d\t%s\t%s\n", depth, role.constData(), NameOf(node).toUtf8().constData());
        for (const Node& child : ChildrenOf(node)) Print(child, depth + 1);
    }

private:
    QDBusConnection Bus;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QString program = QCoreApplication::arguments().value(1);
    const QString address =
        Walk(QDBusConnection::sessionBus())
            .Ask({u"org.a11y.Bus"_s, u"/org/a11y/bus"_s}, u"org.a11y.Bus"_s, u"GetAddress"_s)
            .toString();
    Walk walk(QDBusConnection::connectToBus(address, u"accessibility"_s));
    const Node root{u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
    while (true) {
        for (const Node& node : walk.ChildrenOf(root)) {
            if (walk.NameOf(node) != program) continue;
            walk.Print(node, 0);
            return 0;
        }
        QThread::msleep(100);
    }
}
