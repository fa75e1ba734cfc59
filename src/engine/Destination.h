#pragma once

#include <QString>

namespace Sonmira {

class Run;
class RunView;

// Where the output of a file goes. One object serves a whole run, because two of its values stay from
// file to file where a file gives none of its own.
class Destination {
public:
    // Works out the stem from CurrentInput. Returns false where CurrentInput is missing or its name has no
    // dot: such a file ends the run.
    bool TakeStem(const Run& run);

    // Both set OutputStem: beside the source, or below the output folder. There it lies in `relativeFolder`,
    // or in the RelativeFolder of the record's parent.
    void SetOutputStem(Run& run, RunView& view, const QString& relativeFolder);
    void SetOutputStemInParent(Run& run, RunView& view, const QString& parentFolder);

private:
    bool BesideTheSource(Run& run, RunView& view) const;

    QString SourceFolder;
    QString Stem;
    QString FolderBelow;
};

// The output folder as the window holds it now, with a backslash behind it.
QString OutputRoot(const RunView& view);

// The path of the temporary WAV for a file: in the temporary folder, under the file's name less its last
// `extensionLength` characters, and "wav".
QString TempWavPathFor(const QString& path, int extensionLength);

// The same, with whatever lay there removed: an older file, or a link to another. Empty where something
// stays, such as a file in a folder that takes no changes, which would be converted for the song.
QString FreeTempWavPathFor(const QString& path, int extensionLength);

}  // namespace Sonmira
