#include "engine/Run.h"

#include "engine/Destination.h"
#include "engine/RunView.h"
#include "platform/Clock.h"
#include "platform/Values.h"

namespace Sonmira {

void Run::Begin(RunView& view) {
    view.SetControlsEnabled(false);
    IsCancelled = IsBusy = HasFailed = IsSkipped = false;
}

void Run::End(RunView& view) {
    IsBusy = false;
    view.SetControlsEnabled(true);
    HasFailed = false;
}

void Run::BeginFile(const QString& path) {
    IsSkipped = HasFailed = false;
    InHand.DecodingStopped = InHand.MpcDecodingStopped = false;
    InHand.InputIsWhole = true;
    InHand.Stamp = StampOf(path);
    InHand.CurrentInput = path;
}

void Run::AcceptFile() {
    IsBusy = true;
    InHand.Tag = TagRecord{};
    InHand.Tag.Year = PlainNumber(CurrentYear());
    InHand.Loaded = TagValues();
    InHand.TempWavUsed = false;
    InHand.EncodageParticulier = false;
}

void Run::KeepSource() {
    InHand.RealFileName = InHand.CurrentInput;
    InHand.EncodageParticulier = true;
}

const QString& Run::BeginDecoding(int extensionLength) {
    InHand.TempWavPath = FreeTempWavPathFor(InHand.CurrentInput, extensionLength);
    IsBusy = true;
    return InHand.TempWavPath;
}

void Run::EndDecoding(const QString& wav, bool isWhole) {
    InHand.InputIsWhole = isWhole;
    InHand.TempWavUsed = true;
    InHand.CurrentInput = wav;
}

bool Run::IsSoundWhole() const {
    return InHand.InputIsWhole && InHand.OutputIsWhole && !InHand.DecodingStopped;
}

void Run::CountTrashed(qint64 bytes) {
    ++TrashedFiles;
    TrashedBytes += bytes;
}

RunGuard::RunGuard(Run& run, RunView& view) : Guarded(run), View(view) {
    View.ClearRows();
    Guarded.InHand.CurrentItem = 0;
    Guarded.TrashedFiles = 0;
    Guarded.TrashedBytes = 0;
}

RunGuard::~RunGuard() {
    View.ShowTrashed(Guarded.TrashedFiles, Guarded.TrashedBytes);
}

}  // namespace Sonmira
