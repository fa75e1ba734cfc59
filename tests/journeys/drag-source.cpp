// drag-source FILE...
//
// Another program to drag from: a small window in the corner of the screen. A mouse button that goes down on
// it and moves starts to drag the files, as a file manager does. The other program fetches their names after
// the drop, so this one stays until it is ended.
#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

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
        drag->exec(Qt::CopyAction);
    }

private:
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
