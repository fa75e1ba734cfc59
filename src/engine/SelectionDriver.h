#pragma once

#include "engine/Components.h"
#include "engine/ProgressEvents.h"

namespace Sonmira {

class Run;
class RunView;
struct Collection;

// Converts what one node of the tree stands for: a file, or a folder with all that the numbers of its records
// say lies in it. Works as the full run does, but each file is a little run of its own.
class SelectionDriver {
public:
    SelectionDriver(Run& state, RunView& shown, Components used, Collection& gathered)
        : ThisRun(state), View(shown), Parts(used), Items(gathered), Progress(state, shown, used) {}

    // The selection run of the node of that key. The root's key stands for no record and converts nothing,
    // and so does the empty text, which says that no node is selected.
    void ConvertNode(const QString& key);

    // Converts the record at that position; its output goes below the output folder into `relativeFolder`.
    // A file that ends a run (see RecordSteps) leaves the controls locked until the next one frees them.
    void ConvertOneFile(int position, const QString& relativeFolder);

private:
    void CountFilesUnderNode(const QString& key);
    void CountFilesOfFolder(qint16 index, int depth);
    // Puts a backslash behind `relativeFolder` on the way, for the caller too.
    void ConvertFolderTree(qint16 parentIndex, QString& relativeFolder, int depth);
    void ShowCount();

    Run& ThisRun;
    RunView& View;
    Components Parts;
    Collection& Items;
    ProgressEvents Progress;
    int SelectionTotal = 0;
    int SelectionDone = 0;
};

}  // namespace Sonmira
