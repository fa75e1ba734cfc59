#pragma once

#include "engine/Components.h"
#include "engine/Run.h"

namespace Sonmira {

struct Collection;

// Who may stop what. A click arrives in the middle of a conversion, while it yields, so the stops
// set flags for the driver to read and tell the components that hear it, and do nothing else.
// FlacCodec_Encoder1 and alacdec1 hear nothing and run to their end.

// Stop a scan between two entries and, when a run is busy, the whole run. The menu and the toolbar tell the
// components in different orders.
void CancelByMenu(Run& run, Collection& collection, Components parts);
void CancelByToolbar(Run& run, Collection& collection, Components parts);

// The button of the compact window, which has no scan. The Musepack decoder is not told and runs to its end.
void CancelByButton(Run& run, Components parts);

// The close of a window: a run that has not accepted a file yet ends at its next step instead of going on
// behind a window that is gone.
void CancelByClosing(Run& run);

// Gives up the file in hand; the run goes on with the next one. On its way to an encoder that takes a WAV
// what was copied until then is encoded. Does nothing unless a run is busy.
void SkipFile(Run& run, Components parts);

// Gives up the file in hand where it is being copied as a stream, and nothing else.
void CancelOneFile(Run& run);

// Empties the list of rows, but not while a run is busy.
void ClearRowsWhenIdle(const Run& run, RunView& view);

// How it is heard. The drivers read CancelAll between their steps, the copy of a stream this before each
// block.
bool IsCopyStopped(const Run& run);

// A decoder forgets what it was told before it started, and hears it again at each step of its progress.
template <class Decoder>
void RepeatStop(const Run& run, Decoder& decoder) {
    if (run.File().DecodingStopped) decoder.StopCodec();
}
void RepeatStop(const Run& run, MpcDecoder& decoder);
void RepeatStopToApe(Run& run);

}  // namespace Sonmira
