#include "engine/RecordSteps.h"

#include "engine/InputCheck.h"
#include "engine/InputStage.h"
#include "engine/OutputStage.h"
#include "engine/RunState.h"
#include "engine/RunView.h"
#include "library/ConversionRecords.h"
#include "platform/Clock.h"
#include "platform/FileRemoval.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <QScopeGuard>

namespace Sonmira {

void RecordSteps::AddRow(const ConversionRecord& record) {
    Run.CurrentItem = View.AddRow();
    View.SetRowNumber(Run.CurrentItem, Run.CurrentItem);
    View.SetRowName(Run.CurrentItem, record.Name);
    View.SetRowPercent(Run.CurrentItem, 0);
    View.SetRowIcon(Run.CurrentItem, ConversionIcon);
    View.ScrollToRow(Run.CurrentItem);
}

void RecordSteps::ResetTag() {
    Run.Tag = TagRecord{};
    Run.Tag.Year = PlainNumber(CurrentYear());
    // Fields that no record carries (a composer, say) go from a file to its output through the tag object;
    // what it held of the file before is not this one's.
    Run.Loaded = TagValues();
    Parts.Tags.Clear();
}

bool RecordSteps::Convert(const ConversionRecord& record, const SetStem& setStem) {
    Run.SkipCurrentFile = false;
    Run.FileError = false;
    Run.DecodingStopped = Run.MpcDecodingStopped = false;
    Run.InputIsWhole = true;
    Source = StampOf(record.Path);
    Run.CurrentInput = record.Path;
    if (Rules.ShowsFileName) {
        Statement([&] { View.ShowFileName(record.Name); });
        Statement([&] { View.ClearDuration(); });
    }
    Statement([&] { AddRow(record); });

    bool accepted = false;
    Statement([&] { accepted = CheckInputFile(Run, View, Parts, Run.CurrentInput); });
    if (!accepted) return true;

    Run.Busy = true;
    ResetTag();
    Temp.Used = false;
    Run.EncodageParticulier = false;
    if (!InputStage(Run, View, Parts, Rules, Statement).Prepare(Temp, HeldTitle)) return true;

    bool hasStem = false;
    Statement([&] { hasStem = Target.TakeStem(Run); });
    if (!hasStem) return false;
    Statement([&] { setStem(Target); });
    if (!Run.CancelAll) Statement([&] { OutputStage(Run, View, Parts).Dispatch(); });
    Statement([&] { DeleteTempWav(); });
    return true;
}

void RecordSteps::DeleteTempWav() {
    if (!Temp.Used) return;
    const QString looked = Rules.LooksForTempWavItself ? Temp.Path : Parts.AACDecoder1.GetOutputFile();
    if (FileExists(looked)) DeleteFileOutright(Temp.Path);
}

// A source that a trash takes is there to be had back; one that none takes goes for good only where its sound
// is known to stand in the output.
void RecordSteps::RemoveSource(const QString& path) {
    const bool isWhole = Run.InputIsWhole && Run.OutputIsWhole && !Run.DecodingStopped;
    // Another file may have come under the name since, or have been written into this one.
    const bool isSame = Source && StampOf(path) == Source;
    const SourceRemoval removal =
        RemoveSourceFile(path, isWhole && isSame ? WithoutTrash::Delete : WithoutTrash::Keep);
    if (removal.Ends != SourceRemoval::Place::Trash) return;
    ++Run.TrashedFiles;
    Run.TrashedBytes += removal.Size;
}

void RecordSteps::Finish(const ConversionRecord& record, const std::function<void()>& showCount) {
    // Said of this file alone: a removed record that comes next has no output.
    const auto forget = qScopeGuard([this] { Run.OutputIsWhole = false; });
    Statement([&] { showCount(); });
    Statement.PassFailuresOver();
    // A removed record has no row of its own and paints the row of the file before it.
    if (Run.FileError) {
        Statement([&] { View.SetRowIcon(Run.CurrentItem, ErrorIcon); });
        return;
    }
    Statement([&] { View.SetRowIcon(Run.CurrentItem, ConvertedIcon); });
    if (View.Check2()) Statement([&] { RemoveSource(record.Path); });
}

}  // namespace Sonmira
