// drag-source FILE...
//
// Another program to drag from: a small window in the corner of the screen. A mouse button that goes down on
// it and moves starts to drag the files, as a file manager does. The other program fetches their names after
// the drop, so this one stays until it is ended. Says that it is being dragged, whether what it is over takes
// it
// ("over 1"), and whether it was taken in the end ("dropped 1").
#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

#include <cstdio>

namespace {

class Source : public QLabel {
public:
    explicit Source(QList<QUrl> files) : QLabel(QStringLiteral("drag me")), Files(std::move(files)) {
        setWindowTitle(QStringLiteral("drag-source"));
        setFixedSize(120, 60);
        move(0, 0);
    }

protected:
    void mouseMoveEvent(QMouseEvent* /*event*/) override {
        auto* drag = new QDrag(this);
        auto* dragged = new QMimeData;
        dragged->setUrls(Files);
        drag->setMimeData(dragged);
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { Say("over", action == Qt::CopyAction); });
        Say("dragging", true);
        Say("dropped", drag->exec(Qt::CopyAction) == Qt::CopyAction);
    }

private:
    static void Say(const char* what, bool is) {
        std::printf("%s %d\n", what, is ? 1 : 0);
        std::fflush(stdout);
    }

    QList<QUrl> Files;
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QList<QUrl> files;
    for (const QString& file : QApplication::arguments().mid(1)) files.append(QUrl::fromLocalFile(file));
    Source source(files);
    source.show();
    return QApplication::exec();
}
