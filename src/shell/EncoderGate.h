#pragma once

namespace Sonmira {

// Whether the MP3 encoder library lies in the system folder. Looks afresh at each call and at that one
// place only.
bool IsLameInstalled();

}  // namespace Sonmira
