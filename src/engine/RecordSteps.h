#pragma once

#include "engine/Components.h"
#include "engine/Destination.h"
#include "platform/Failure.h"
#include "platform/FileIdentity.h"

#include <QStringView>

namespace Sonmira {

// The points in which a run over the whole collection and the conversion of one record differ. Those below
// concern a record's own steps, which are the same code for both (RecordSteps). The others lie in the shape
// of the two drivers:
//
//                       JobDriver                              SelectionDriver
//   closing steps       once, at the end of the run            after every file, so the controls flash
//   CancelAll           cleared once                           cleared at the start of every file, and
//                                                              tested after it
//   folder label        written per folder record              written per file
//   output folder       the parent record's RelativeFolder     built up from the selected node's name
//   folders             made unless outputs go beside          always made, below the output folder
//                       their sources
struct DriverRules {
    // The labels with the name and length of the file in hand.
    bool ShowsFileName;
    // Added to the track of a WMA input, whose tracks count from 0.
    int WmaTrackOffset;
    // The year of an input of that kind without a tag.
    QStringView UntaggedApeYear;
    QStringView UntaggedMpcYear;
    // Whether the temporary WAV goes when it is there itself, or when the file is there that the AAC decoder
    // last named as its output.
    bool LooksForTempWavItself;
};

inline constexpr DriverRules FullRunRules{true, 1, u"2010", u"2009", true};
inline constexpr DriverRules SingleFileRules{false, 0, u"2008", u"2008", false};

// Runs the driver's statements. Until the first file is finished a failure is nobody's to handle here; from
// then on it is passed over, so that what fails in one file does not end the run of the others.
class Statements {
public:
    void PassFailuresOver() { PassesOver = true; }

    template <class Step>
    void operator()(Step&& step) const {
        if (PassesOver) {
            PassOver(step);
        } else {
            step();
        }
    }

private:
    bool PassesOver = false;
};

class Run;
class RunView;
struct ConversionRecord;

// The steps of one file, in the order in which they are taken, the same for both drivers but for their rules.
// Holds what a run remembers from file to file; a new run takes a new object.
class RecordSteps {
public:
    RecordSteps(Run& state, RunView& shown, Components used, const DriverRules& rules)
        : ThisRun(state), View(shown), Parts(used), Rules(rules) {}

    // Sets OutputStem once the stem is known.
    using SetStem = std::function<void(Destination& target)>;

    // Takes a file from its row to its output. Returns false when the run is to be left at once, without its
    // closing steps: a file without a dot in its name, or a decoded file that is not there, ends a run.
    bool Convert(const ConversionRecord& record, const SetStem& setStem);

    // What comes after each file, also a refused one: `showCount`, the row's last icon, the removal of the
    // source where it is asked for. From here on failures of the driver's statements are passed over.
    void Finish(const ConversionRecord& record, const std::function<void()>& showCount);

private:
    void AddRow(const ConversionRecord& record);
    void DeleteTempWav();
    void RemoveSource(const QString& path);

    Run& ThisRun;
    RunView& View;
    Components Parts;
    const DriverRules& Rules;
    Statements Statement;
    Destination Target;
    QString HeldTitle;  // of the last AAC file that had one
};

}  // namespace Sonmira
