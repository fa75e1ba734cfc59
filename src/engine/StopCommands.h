#pragma once

#include "engine/Components.h"

namespace Sonmira {

class RunView;
struct Collection;
struct RunState;

// What the user can do to stop. A click arrives in the middle of a conversion, while it yields, so these
// set flags for the driver and the components to read and do nothing else. The FLAC encoder and the ALAC
// decoder hear nothing and run to their end.

// Stop a scan between two entries and, when a run is busy, the whole run. The menu and the toolbar tell the
// components in different orders.
void CancelByMenu(RunState& run, Collection& collection, Components parts);
void CancelByToolbar(RunState& run, Collection& collection, Components parts);

// The button of the compact window, which has no scan. The Musepack decoder is not told and runs to its end.
void CancelByButton(RunState& run, Components parts);

// Gives up the file in hand; the run goes on with the next one. Does nothing unless a run is busy.
void SkipFile(RunState& run, Components parts);

// Gives up the file in hand where it is being copied as a stream, and nothing else.
void CancelOneFile(RunState& run);

// Empties the list of rows, but not while a run is busy.
void ClearRowsWhenIdle(const RunState& run, RunView& view);

}  // namespace Sonmira
