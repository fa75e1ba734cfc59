#pragma once

class QToolBar;

namespace Sonmira {

// Tells assistive tools what the kit's controls are. Every control of the kit calls it; the first call
// counts.
void InstallKitAccessibility();

// Names the button behind which a toolbar keeps what has no room: the toolkit leaves it without a name.
void NameExtensionOf(const QToolBar& bar);

}  // namespace Sonmira
