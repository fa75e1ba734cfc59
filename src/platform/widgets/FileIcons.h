#pragma once

#include <QIcon>

namespace Sonmira {

// One of our own drawings by its file name without ending, such as "folder". Sharp at every size.
QIcon OwnIcon(QStringView name);

}  // namespace Sonmira
