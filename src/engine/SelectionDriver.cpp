#include "engine/SelectionDriver.h"

#include "engine/RecordSteps.h"
#include "engine/Run.h"
#include "engine/RunView.h"
#include "library/Collection.h"
#include "library/ConversionRecords.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/Values.h"

#include <QScopeGuard>

namespace Sonmira {

namespace {

// No folder lies deeper than its path can be long. Deeper is a walk in a circle, which numbers that are
// shared by two records could make.
constexpr int DeepestFolder = 2048;

}  // namespace

void SelectionDriver::ShowCount() {
    View.ShowCount(SelectionDone, SelectionTotal);
}

void SelectionDriver::CountFilesUnderNode(const QString& key) {
    const std::optional<int> position = Items.Records.FirstWithPath(key);
    if (!position || Items.Records[*position].Removed) return;
    const ConversionRecord& record = Items.Records[*position];
    if (record.IsFile) {
        ++SelectionTotal;
    } else {
        CountFilesOfFolder(record.Index, 0);
    }
}

void SelectionDriver::CountFilesOfFolder(qint16 index, int depth) {
    if (index == 0 || depth > DeepestFolder) return;
    for (const int position : Items.Records.ChildrenOf(index)) {
        const ConversionRecord& child = Items.Records[position];
        if (child.Removed) continue;
        if (child.IsFile) {
            ++SelectionTotal;
        } else {
            CountFilesOfFolder(child.Index, depth + 1);
        }
    }
}

void SelectionDriver::ConvertNode(const QString& key) {
    ThisRun.ForgetCancel();
    const RunGuard guard(ThisRun, View);
    SelectionTotal = SelectionDone = 0;
    if (key.isEmpty()) return;
    CountFilesUnderNode(key);
    const std::optional<int> position = Items.Records.FirstWithPath(key);
    if (!position) return;
    const ConversionRecord record = Items.Records[*position];
    if (record.IsFile) {
        SelectionTotal = 1;
        if (!ThisRun.CancelAll()) ConvertOneFile(*position, {});
        return;
    }
    if (ThisRun.CancelAll()) return;
    // Made whether or not the outputs go beside their sources.
    CreateFolder(OutputRoot(View) + record.Name);
    QString name = record.Name;
    // The backslash that the walk puts behind the name stays with the record, as it always has.
    const auto keepName = qScopeGuard([&] {
        const std::optional<int> now = Items.Records.FirstWithPath(key);
        if (now) Items.Records.SetName(*now, name);
    });
    ConvertFolderTree(record.Index, name, 0);
}

void SelectionDriver::ConvertFolderTree(qint16 parentIndex, QString& relativeFolder, int depth) {
    // A record that could not be numbered has no children of its own.
    if (ThisRun.CancelAll() || parentIndex == 0 || depth > DeepestFolder) return;
    RecordWalk walk(Items.Records);
    while (const std::optional<int> next = walk.NextChildOf(parentIndex)) {
        const int position = *next;
        // A copy: while a file is converted the user may remove records.
        const ConversionRecord child = Items.Records[position];
        if (child.Removed) continue;
        if (child.IsFile) {
            ConvertOneFile(position, relativeFolder);
        } else {
            if (ThisRun.CancelAll()) break;
            relativeFolder = WithBackslash(relativeFolder);
            CreateFolder(OutputRoot(View) + relativeFolder + child.Name);
            QString childFolder = relativeFolder + child.Name;
            ConvertFolderTree(child.Index, childFolder, depth + 1);
        }
        if (ThisRun.CancelAll()) break;
    }
}

void SelectionDriver::ConvertOneFile(int position, const QString& relativeFolder) {
    ThisRun.Begin(View);
    ShowCount();
    // A copy, for the same reason.
    const ConversionRecord record = Items.Records[position];
    RecordSteps steps(ThisRun, View, Parts, SingleFileRules);
    if (!record.Removed) {
        View.ShowFolder(relativeFolder);
        const auto setStem = [&](Destination& target) {
            target.SetOutputStem(ThisRun, View, relativeFolder);
        };
        if (!steps.Convert(record, setStem)) return;
    }
    if (record.IsFile) {
        ++SelectionDone;
        steps.Finish(record, [this] { ShowCount(); });
    }
    View.Yield();
    ThisRun.End(View);
}

}  // namespace Sonmira
