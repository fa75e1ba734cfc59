#include "platform/widgets/FileIcons.h"

#include <QtGlobal>

// A static library's resources are only there once somebody asks for them by name. The macro must stand
// outside every namespace.
static void UseDrawings() {
    Q_INIT_RESOURCE(drawings);
}

namespace Sonmira {

using namespace Qt::StringLiterals;

QIcon OwnIcon(QStringView name) {
    UseDrawings();
    return QIcon(u":/icons/"_s + name.toString() + u".svg"_s);
}

}  // namespace Sonmira
