#include "compact/RowDriver.h"

#include "compact/AudiotoolRows.h"
#include "compact/AudiotoolRunView.h"
#include "engine/RecordSteps.h"
#include "engine/Run.h"
#include "library/ConversionRecords.h"
#include "platform/Paths.h"
#include "platform/Values.h"

namespace Sonmira {

namespace {

// One file alone shows its name here, too.
constexpr DriverRules SingleRowRules = [] {
    DriverRules rules = SingleFileRules;
    rules.ShowsFileName = true;
    return rules;
}();

constexpr qint32 HighestMpcQuality = 10;

ConversionRecord RecordOf(const QString& path) {
    ConversionRecord record;
    record.IsFile = true;
    record.Path = path;
    record.Name = FileNameOf(path);
    return record;
}

}  // namespace

RowDriver::RowDriver(Run& state, AudiotoolRunView& shown, Components used, const AudiotoolRows& gathered)
    : ThisRun(state), View(shown), Parts(used), Rows(gathered), Progress(state, shown, used) {}

void RowDriver::RunAllRows() {
    ThisRun.Begin(View);
    const RunGuard guard(ThisRun, View);
    RecordSteps steps(ThisRun, View, Parts, FullRunRules);
    for (int row = 1; row <= Rows.Count() && !ThisRun.CancelAll(); ++row) {
        if (!Convert(steps, row)) return;
    }
    ThisRun.End(View);
}

void RowDriver::ConvertRow(int row) {
    Rows.Path(row);  // a row that is not there fails before anything is locked
    ThisRun.Begin(View);
    RecordSteps steps(ThisRun, View, Parts, SingleRowRules);
    if (Convert(steps, row)) ThisRun.End(View);
}

bool RowDriver::Convert(RecordSteps& steps, int row) {
    View.TakeRow(row);
    View.ShowProgress(0);  // what an earlier attempt left
    View.ShowCount(row, Rows.Count());
    const ConversionRecord record = RecordOf(Rows.Path(row));
    const auto setStem = [this](Destination& target) {
        // As late as this, because the list of qualities stays free during a run.
        const qint32 quality = std::clamp<qint32>(Parts.Settings.MpcQuality, 0, HighestMpcQuality);
        Parts.mpcencoder1.SetQuality(static_cast<qint16>(quality));
        target.SetOutputStem(ThisRun, View, QString());
    };
    if (!steps.Convert(record, setStem)) return false;
    steps.Finish(record, [] {});
    // A run in which every file is refused copies nothing and would otherwise never let the window paint.
    View.Yield();
    return true;
}

}  // namespace Sonmira
