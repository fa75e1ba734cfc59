#pragma once

namespace Sonmira {

// The current calendar year in local time.
int CurrentYear();
// For tests: makes CurrentYear answer `year`; 0 goes back to the real clock.
void OverrideCurrentYear(int year);

}  // namespace Sonmira
