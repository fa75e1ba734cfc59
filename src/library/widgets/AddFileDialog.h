#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Asks for files and gives the path of each to `add`; remembers the folder for next time. A cancelled dialog,
// or a failure on the way, ends it at once and remembers nothing.
void AddFileDialog(const std::function<void(const QString& path)>& add);

}  // namespace Sonmira
