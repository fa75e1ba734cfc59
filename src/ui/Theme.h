#pragma once

class QApplication;

namespace Sonmira {

// The look of all windows: one style and one complete palette of our own, so that a desktop theme never
// leaves unreadable pairs of colours. Light or dark is taken over from the colours that the desktop gave to
// the application, so call it once, before anything else sets them. Windows get the icon of the program; one
// of another program may set its own afterwards.
void ApplyTheme(QApplication& application);

}  // namespace Sonmira
