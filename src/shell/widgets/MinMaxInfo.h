#pragma once

#include "kit/Twips.h"

class QWidget;

namespace Sonmira {

// Holds a window at that size (in twips) at least and at the size of the screen at most. The screen is looked
// at once: a later change of it is not seen.
void HookMinMaxInfo(QWidget& window, double minWidth, double minHeight);

// Lets the window take any size again.
void UnhookMinMaxInfo(QWidget& window);

}  // namespace Sonmira
