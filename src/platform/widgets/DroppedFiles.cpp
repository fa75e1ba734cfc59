#include "platform/widgets/DroppedFiles.h"

#include "platform/NativePath.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace Sonmira {

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
