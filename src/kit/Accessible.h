#pragma once

namespace Sonmira {

// Tells assistive tools what the kit's controls are. Every control of the kit calls it; the first call
// counts.
void InstallKitAccessibility();

}  // namespace Sonmira
