#include "engine/RecordSteps.h"

#include "engine/InputCheck.h"
#include "engine/OutputStage.h"
#include "engine/RunState.h"
#include "engine/RunView.h"
#include "library/ConversionRecords.h"
#include "platform/Clock.h"
#include "platform/Failure.h"
#include "platform/FileRemoval.h"
#include "platform/Folders.h"
#include "shell/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

RecordSteps::RecordSteps(RunState& state, RunView& shown, Components used, const ConversionRecords& collected,
                         int fileTotal)
    : Run(state), View(shown), Parts(used), Records(collected), FileTotal(fileTotal) {}

template <class Step>
void RecordSteps::Statement(Step&& step) {
    if (PassesFailuresOver) {
        PassOver(step);
    } else {
        step();
    }
}

void RecordSteps::ShowCount() {
    View.ShowCount(PlainNumber(FilesDone) + u" / "_s + PlainNumber(FileTotal));
}

bool RecordSteps::Convert(const ConversionRecord& record) {
    if (!record.Removed) {
        if (!record.IsFile) {
            EnterFolder(record);
        } else if (!ConvertFile(record)) {
            return false;
        }
    }
    if (record.IsFile) Finish(record);
    // A run in which every file is refused copies nothing and would otherwise never let the window paint.
    View.Yield();
    return true;
}

void RecordSteps::EnterFolder(const ConversionRecord& record) {
    if (View.CheckOutPath()) {
        View.ShowFolder(record.Path);
        return;
    }
    // An existing folder is fine, and one whose parent is missing stays missing.
    CreateFolder(OutputRoot(View) + record.RelativeFolder);
    View.ShowFolder(record.RelativeFolder);
}

void RecordSteps::AddRow(const ConversionRecord& record) {
    Run.CurrentItem = View.AddRow();
    View.SetRowText(Run.CurrentItem, FormatNumber(Run.CurrentItem, u"###000") + u'.');
    View.SetRowName(Run.CurrentItem, record.Name);
    View.SetRowProgress(Run.CurrentItem, u"0 %"_s);
    View.SetRowIcon(Run.CurrentItem, ConversionIcon);
    View.ScrollToRow(Run.CurrentItem);
}

bool RecordSteps::ConvertFile(const ConversionRecord& record) {
    Run.SkipCurrentFile = false;
    Run.FileError = false;
    Run.CurrentInput = record.Path;
    Statement([&] { View.ShowFileName(record.Name); });
    Statement([&] { View.ShowDuration({}); });
    Statement([&] { AddRow(record); });

    bool accepted = false;
    Statement([&] { accepted = CheckInputFile(Run, View, Parts.FileRenc, Run.CurrentInput); });
    if (!accepted) return true;

    Run.Busy = true;
    Run.Tag = TagRecord{};
    Run.Tag.Year = PlainNumber(CurrentYear());
    Run.EncodageParticulier = false;

    bool hasStem = false;
    Statement([&] { hasStem = Target.TakeStem(Run); });
    if (!hasStem) return false;
    Statement([&] { Target.SetOutputStem(Run, View, Records, record); });
    if (!Run.CancelAll) Statement([&] { OutputStage(Run, View, Parts).Dispatch(); });
    return true;
}

void RecordSteps::Finish(const ConversionRecord& record) {
    ++FilesDone;
    Statement([&] { ShowCount(); });
    PassesFailuresOver = true;
    // A removed record has no row of its own and paints the row of the file before it.
    if (Run.FileError) {
        Statement([&] { View.SetRowIcon(Run.CurrentItem, ErrorIcon); });
        return;
    }
    Statement([&] { View.SetRowIcon(Run.CurrentItem, ConvertedIcon); });
    if (View.Check2()) Statement([&] { RemoveSourceFile(record.Path); });
}

}  // namespace Sonmira
