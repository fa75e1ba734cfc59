// drop-target
//
// The real main window on the screen, with nothing around it. Says where the middle of its tree lies
// ("tree X Y"), again where that changes, waits until something was added and nothing is being added any
// more, and prints the nodes in order, and whether the inputs are free again.
#include "library/widgets/ConversionTree.h"
#include "platform/Paths.h"
#include "shell/Settings.h"
#include "ui/BatchConverter.h"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace Sonmira;
    QApplication application(argc, argv);
    LocateSettingsFile();
    WriteIniValue(SettingsFile, QStringLiteral("LANGUE"), QStringLiteral("VALUE"), QStringLiteral(" 0"));
    BatchConverter window;
    window.move(300, 100);
    window.show();
    ConversionTree* const tree = window.Form().TreeView1;
    QPoint said;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, tree, [&] {
        const QPoint middle = tree->viewport()->mapToGlobal(tree->viewport()->rect().center());
        if (window.windowHandle()->isExposed() && middle != said) {
            said = middle;
            std::printf("tree %d %d\n", middle.x(), middle.y());
            std::fflush(stdout);
        }
        if (tree->NodeCount() < 2 || window.Gathered().ScanRunning) return;
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
            std::printf("node %s\n", ToNarrow((*it)->text(0)).constData());
        }
        std::printf("free %d\n", window.Form().ToolbarButton(5)->isEnabled() ? 1 : 0);
        std::fflush(stdout);
        QApplication::exit(0);
    });
    poll.start(300);
    return QApplication::exec();
}
