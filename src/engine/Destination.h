#pragma once

#include <QString>

namespace Sonmira {

class ConversionRecords;
class RunView;
struct ConversionRecord;
struct RunState;

// Where the output of a file goes. One object serves a whole run, because two of its values stay from
// file to file where a file gives none of its own.
class Destination {
public:
    // Works out the stem from CurrentInput. Returns false where CurrentInput is missing or its name has no
    // dot: such a file ends the run.
    bool TakeStem(const RunState& run);

    // Set OutputStem: beside the source, or below the output folder in the folder of the record's parent, or
    // in `relativeFolder`.
    void SetOutputStem(RunState& run, RunView& view, const ConversionRecords& records,
                       const ConversionRecord& record);
    void SetOutputStem(RunState& run, RunView& view, const QString& relativeFolder);

private:
    bool BesideTheSource(RunState& run, RunView& view) const;

    QString SourceFolder;
    QString Stem;
    QString FolderBelow;
};

// The output folder as the window holds it now, with a backslash behind it.
QString OutputRoot(const RunView& view);

}  // namespace Sonmira
