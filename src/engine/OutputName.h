#pragma once

#include "platform/Failure.h"

#include <QString>

namespace Sonmira {

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
