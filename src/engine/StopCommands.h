#pragma once

namespace Sonmira {

class RunView;
struct Collection;
struct RunState;

// What the user can do to stop. A click arrives in the middle of a conversion, while it yields, so these
// set flags for the driver to read and do nothing else.

// Stops a scan between two entries and, when a run is busy, the whole run.
void CancelEverything(RunState& run, Collection& collection);

// Gives up the file in hand; the run goes on with the next one. Does nothing unless a run is busy.
void SkipFile(RunState& run);

// Empties the list of rows, but not while a run is busy.
void ClearRowsWhenIdle(const RunState& run, RunView& view);

}  // namespace Sonmira
