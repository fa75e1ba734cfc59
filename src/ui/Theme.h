#pragma once

class QApplication;

namespace Sonmira {

// The look of all windows: one style and one complete palette of our own, so that a desktop theme never
// leaves unreadable pairs of colours.
void ApplyTheme(QApplication& application);

}  // namespace Sonmira
