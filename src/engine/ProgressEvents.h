#pragma once

#include "engine/Components.h"

namespace Sonmira {

class Run;
class RunView;

// Shows what the components tell of their progress, for as long as it lives: a run has one. Decoders move the
// bar only, FlacCodec_Encoder1 and mpcencoder1 the row too. Each step yields to the event loop, which is when
// a stop command is heard.
class ProgressEvents {
public:
    ProgressEvents(Run& state, RunView& shown, Components watched);
    ~ProgressEvents();
    ProgressEvents(const ProgressEvents&) = delete;
    ProgressEvents& operator=(const ProgressEvents&) = delete;

private:
    Components Parts;
};

// What CompressFile and DecompressFile call with thousandths of a percent. Moves the bar only, both ways.
ApeProgressCallback MakeApeProgress(RunView& view);
// The same, and it tells a decoder to stop that began after it was told to.
ApeProgressCallback MakeApeDecodingProgress(Run& run, RunView& view);

}  // namespace Sonmira
