#pragma once

#include "platform/Failure.h"

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

class Run;

// The name of an output. It was free when it was looked for; where somebody else takes it before the file is
// made, the next free one counts. The number of the name stays in the run's OutputStem: song, else song(1),
// song(2), ...
class OutputName {
public:
    // Looks for the first free name of the run's OutputStem with that extension. Hidden files are not seen.
    OutputName(Run& state, QString extension);

    // The whole inner path.
    QString Path() const;

    // Has `create` make the file of a given path. What fails because a file has the name by now, or has it
    // unseen, is tried under the next name; a folder or a link that leads nowhere stays the failure.
    template <class Create>
    void CreateBy(Create&& create) {
        while (true) {
            try {
                create(Path());
                return;
            } catch (const Failure& failure) {
                if (failure.Number != FailureNumber::FileAlreadyExists || !IsTakenByFile()) throw;
                TakeNext();
            }
        }
    }

private:
    bool IsTakenByFile() const;
    // The next number whose name no visible file has.
    void TakeNext();

    Run& ThisRun;
    QString Stem;
    QString Extension;
    int Number = 0;  // 0 is the bare stem
};

}  // namespace Sonmira
