#pragma once

#include "engine/Components.h"

namespace Sonmira {

// The length of a file for people: minutes and seconds, two digits each at least ("07:05", "120:00"). "-" for
// an AAC file, whose decoder tells none, and "00:00" for a file that cannot be read. Opens the file in the
// components, so no run may be busy with them.
QString ReadFileInformation(Components parts, const QString& path);

}  // namespace Sonmira
