#include "engine/StopCommands.h"

#include "engine/RunView.h"
#include "library/Collection.h"

namespace Sonmira {

namespace {

void StopAllDecoding(Run& run) {
    run.StopDecoding();
    run.StopMpcDecoding();
}

void StopInMenuOrder(Run& run, Components parts) {
    StopAllDecoding(run);
    parts.AACDecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    parts.mpcencoder1.StopCodec();
    parts.mpcdecoder1.StopCodec();
    run.RaiseKillFlag();
}

}  // namespace

void CancelByMenu(Run& run, Collection& collection, Components parts) {
    collection.StopScan = true;
    if (!run.Busy()) return;
    StopInMenuOrder(run, parts);
    run.Cancel();
}

void CancelByToolbar(Run& run, Collection& collection, Components parts) {
    collection.StopScan = true;
    if (!run.Busy()) return;
    StopAllDecoding(run);
    parts.AACDecoder1.StopCodec();
    parts.mpcencoder1.StopCodec();
    parts.mpcdecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    run.RaiseKillFlag();
    run.Cancel();
}

void CancelByButton(Run& run, Components parts) {
    if (!run.Busy()) return;
    run.StopDecoding();
    parts.AACDecoder1.StopCodec();
    parts.FlacCodec1.StopCodec();
    parts.alacdec1.StopCodec();
    parts.mpcencoder1.StopCodec();
    run.RaiseKillFlag();
    run.Cancel();
}

void CancelByClosing(Run& run) {
    StopAllDecoding(run);
    run.Cancel();
}

void SkipFile(Run& run, Components parts) {
    if (!run.Busy()) return;
    run.SkipFile();
    StopInMenuOrder(run, parts);
}

void CancelOneFile(Run& run) {
    run.SkipFile();
}

void ClearRowsWhenIdle(const Run& run, RunView& view) {
    if (!run.Busy()) view.ClearRows();
}

bool IsCopyStopped(const Run& run) {
    return run.SkipCurrentFile() || run.CancelAll();
}

void RepeatStop(const Run& run, MpcDecoder& decoder) {
    if (run.File().MpcDecodingStopped) decoder.StopCodec();
}

void RepeatStopToApe(Run& run) {
    if (run.File().DecodingStopped) run.RaiseKillFlag();
}

}  // namespace Sonmira
