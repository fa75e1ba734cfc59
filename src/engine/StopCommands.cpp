#include "engine/StopCommands.h"

#include "engine/RunState.h"
#include "engine/RunView.h"
#include "library/Collection.h"

namespace Sonmira {

namespace {

void StopInMenuOrder(RunState& run, Components parts) {
    run.DecodingStopped = run.MpcDecodingStopped = true;
    parts.AACDecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    parts.mpcencoder1.StopCodec();
    parts.mpcdecoder1.StopCodec();
}

}  // namespace

void CancelByMenu(RunState& run, Collection& collection, Components parts) {
    collection.StopScan = true;
    if (!run.Busy) return;
    StopInMenuOrder(run, parts);
    run.KillFlag = 1;
    run.CancelAll = true;
}

void CancelByToolbar(RunState& run, Collection& collection, Components parts) {
    collection.StopScan = true;
    if (!run.Busy) return;
    run.DecodingStopped = run.MpcDecodingStopped = true;
    parts.AACDecoder1.StopCodec();
    parts.mpcencoder1.StopCodec();
    parts.mpcdecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    run.KillFlag = 1;
    run.CancelAll = true;
}

void CancelByButton(RunState& run, Components parts) {
    if (!run.Busy) return;
    run.DecodingStopped = true;
    parts.AACDecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    parts.alacdec1.StopCodec();
    parts.mpcencoder1.StopCodec();
    run.KillFlag = 1;
    run.CancelAll = true;
}

void SkipFile(RunState& run, Components parts) {
    if (!run.Busy) return;
    run.SkipCurrentFile = true;
    StopInMenuOrder(run, parts);
    run.KillFlag = 1;
}

void CancelOneFile(RunState& run) {
    run.SkipCurrentFile = true;
}

void ClearRowsWhenIdle(const RunState& run, RunView& view) {
    if (!run.Busy) view.ClearRows();
}

}  // namespace Sonmira
