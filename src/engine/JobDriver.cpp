#include "engine/JobDriver.h"

#include "engine/RecordSteps.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "library/Collection.h"
#include "library/ConversionRecords.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
#include "platform/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

void JobDriver::ShowCount() {
    View.ShowCount(FilesDone, Items.FileCount);
}

void JobDriver::RunAllConversions() {
    ThisRun.Begin(View);
    const RunGuard guard(ThisRun, View);
    FilesDone = 0;
    ShowCount();

    RecordSteps steps(ThisRun, View, Parts, FullRunRules);
    RecordWalk walk(Items.Records);
    while (const std::optional<int> position = walk.Next()) {
        Checked16(*position);  // the records are numbered in 16 bits; a longer collection is an overflow
        if (ThisRun.CancelAll()) break;
        // A copy: while a file is converted the user may remove records.
        const ConversionRecord record = Items.Records[*position];
        if (!ConvertRecord(steps, record)) return;
        // A run in which every file is refused copies nothing and would otherwise never let the window paint.
        View.Yield();
    }
    ThisRun.End(View);
}

bool JobDriver::ConvertRecord(RecordSteps& steps, const ConversionRecord& record) {
    if (!record.Removed && !record.IsFile) EnterFolder(record);
    if (!record.IsFile) return true;
    const std::optional<int> parent = Items.Records.FolderHolding(record);
    // Kept as it is now, like the record: a removal takes the folder along with its file.
    const QString parentFolder = parent ? Items.Records[*parent].RelativeFolder : u"\\"_s;
    const auto setStem = [&](Destination& target) {
        target.SetOutputStemInParent(ThisRun, View, parentFolder);
    };
    if (!record.Removed && !steps.Convert(record, setStem)) return false;
    ++FilesDone;
    steps.Finish(record, [this] { ShowCount(); });
    return true;
}

void JobDriver::EnterFolder(const ConversionRecord& record) {
    if (View.CheckOutPath()) {
        View.ShowFolder(record.Path);
        return;
    }
    // An existing folder is fine, and one whose parent is missing stays missing.
    CreateFolder(OutputRoot(View) + record.RelativeFolder);
    View.ShowFolder(record.RelativeFolder);
}

}  // namespace Sonmira
