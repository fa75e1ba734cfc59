#include "engine/ProgressEvents.h"

#include "engine/Run.h"
#include "engine/RunView.h"
#include "engine/StopCommands.h"
#include "platform/Values.h"

namespace Sonmira {

namespace {

int Percent(qint32 done, qint32 total) {
    return static_cast<int>(RoundHalfEven(static_cast<double>(done) / total * 100));
}

// Encoders write the bar and the row together, and only where the row's text changes.
void ShowEncoding(Run& run, RunView& view, int percent) {
    if (view.UpdateRowPercent(run.CurrentItem(), percent)) view.ShowProgress(percent);
}

}  // namespace

ProgressEvents::ProgressEvents(Run& state, RunView& shown, Components watched) : Parts(watched) {
    const auto moveBar = [&run = state, &view = shown](auto& decoder) {
        return [&](qint16 percent) {
            view.ShowProgress(percent);
            view.Yield();
            RepeatStop(run, decoder);
        };
    };
    Parts.AACDecoder1.Progress = moveBar(Parts.AACDecoder1);
    Parts.FlacCodec1.Progress = moveBar(Parts.FlacCodec1);
    Parts.FlacCodec_Encoder1.Progress = [&run = state, &view = shown](qint16 percent) {
        ShowEncoding(run, view, percent);
        view.Yield();
    };
    // The order of the two arguments differs from component to component.
    Parts.alacdec1.Progress = [&view = shown](qint32 done, qint32 total) {
        if (done == 0 || total == 0) return;
        view.ShowProgress(Percent(done, total));
        view.Yield();
    };
    Parts.mpcdecoder1.Progress = [&run = state, &view = shown, &decoder = Parts.mpcdecoder1](qint32 total,
                                                                                             qint32 done) {
        if (done == 0 || total == 0) return;
        view.ShowProgress(Percent(done, total));
        view.Yield();
        RepeatStop(run, decoder);
    };
    Parts.mpcencoder1.Progress = [&run = state, &view = shown](qint32 total, qint32 done) {
        if (done == 0 || total == 0) return;
        ShowEncoding(run, view, Percent(done, total));
        view.Yield();
    };
}

ProgressEvents::~ProgressEvents() {
    Parts.AACDecoder1.Progress = nullptr;
    Parts.FlacCodec1.Progress = nullptr;
    Parts.FlacCodec_Encoder1.Progress = nullptr;
    Parts.alacdec1.Progress = nullptr;
    Parts.mpcdecoder1.Progress = nullptr;
    Parts.mpcencoder1.Progress = nullptr;
}

ApeProgressCallback MakeApeProgress(RunView& view) {
    return [&view](qint32 thousandths) {
        view.ShowProgress(std::min(static_cast<int>(RoundHalfEven(thousandths / 1000.0)), 100));
        view.Yield();
    };
}

ApeProgressCallback MakeApeDecodingProgress(Run& run, RunView& view) {
    return [&run, show = MakeApeProgress(view)](qint32 thousandths) {
        show(thousandths);
        RepeatStopToApe(run);
    };
}

}  // namespace Sonmira
