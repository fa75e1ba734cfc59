#include "engine/RecordSteps.h"

#include "engine/InputCheck.h"
#include "engine/InputStage.h"
#include "engine/OutputStage.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "library/ConversionRecords.h"
#include "platform/FileRemoval.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <QScopeGuard>

namespace Sonmira {

void RecordSteps::AddRow(const ConversionRecord& record) {
    ThisRun.TakeRow(View.AddRow());
    View.SetRowNumber(ThisRun.CurrentItem(), ThisRun.CurrentItem());
    View.SetRowName(ThisRun.CurrentItem(), record.Name);
    View.SetRowPercent(ThisRun.CurrentItem(), 0);
    View.SetRowIcon(ThisRun.CurrentItem(), ConversionIcon);
    View.ScrollToRow(ThisRun.CurrentItem());
}

bool RecordSteps::Convert(const ConversionRecord& record, const SetStem& setStem) {
    ThisRun.BeginFile(record.Path);
    if (Rules.ShowsFileName) {
        Statement([&] { View.ShowFileName(record.Name); });
        Statement([&] { View.ClearDuration(); });
    }
    Statement([&] { AddRow(record); });

    bool accepted = false;
    Statement([&] { accepted = CheckInputFile(ThisRun, View, Parts, ThisRun.CurrentInput()); });
    if (!accepted) return true;

    ThisRun.AcceptFile();
    // Fields that no record carries (a composer, say) go from a file to its output through the tag object;
    // what it held of the file before is not this one's.
    Parts.Tags.Clear();
    if (!InputStage(ThisRun, View, Parts, Rules, Statement, HeldTitle).Prepare()) return true;

    bool hasStem = false;
    Statement([&] { hasStem = Target.TakeStem(ThisRun); });
    if (!hasStem) return false;
    Statement([&] { setStem(Target); });
    if (!ThisRun.CancelAll()) Statement([&] { OutputStage(ThisRun, View, Parts).Dispatch(); });
    Statement([&] { DeleteTempWav(); });
    return true;
}

void RecordSteps::DeleteTempWav() {
    const FileInHand& file = ThisRun.File();
    if (!file.TempWavUsed) return;
    const QString looked = Rules.LooksForTempWavItself ? file.TempWavPath : Parts.AACDecoder1.GetOutputFile();
    if (FileExists(looked)) DeleteFileOutright(file.TempWavPath);
}

// A source that a trash takes is there to be had back; one that none takes goes for good only where its sound
// is known to stand in the output.
void RecordSteps::RemoveSource(const QString& path) {
    // Another file may have come under the name since, or have been written into this one.
    const std::optional<FileStamp>& begun = ThisRun.File().Stamp;
    const bool isSame = begun && StampOf(path) == begun;
    const SourceRemoval removal =
        RemoveSourceFile(path, ThisRun.IsSoundWhole() && isSame ? WithoutTrash::Delete : WithoutTrash::Keep);
    if (removal.Ends == SourceRemoval::Place::Trash) ThisRun.CountTrashed(removal.Size);
}

void RecordSteps::Finish(const ConversionRecord& record, const std::function<void()>& showCount) {
    // Said of this file alone: a removed record that comes next has no output.
    const auto forget = qScopeGuard([this] { ThisRun.EndOutput(false); });
    Statement([&] { showCount(); });
    Statement.PassFailuresOver();
    // A removed record has no row of its own and paints the row of the file before it.
    if (ThisRun.FileError()) {
        Statement([&] { View.SetRowIcon(ThisRun.CurrentItem(), ErrorIcon); });
        return;
    }
    Statement([&] { View.SetRowIcon(ThisRun.CurrentItem(), ConvertedIcon); });
    if (View.Check2()) Statement([&] { RemoveSource(record.Path); });
}

}  // namespace Sonmira
