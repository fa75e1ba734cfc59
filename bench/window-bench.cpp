// window-bench [FILES...]
//
// Works the real main window, on no screen, over 1,000, 10,000 and 30,000 small files in folders of 15: adds
// them with the folders closed and with all of them open, removes a folder of up to 10,000, and runs over the
// files as a whole and as a selection, without any sound. Prints for each what a file costs in processor time
// and how that compares with the smallest collection, the longest time for which the window heard nothing,
// and memory. Fails where the window was at work unhearing for too long or the cost of a file grows.
#include "BenchSupport.h"
#include "HeadlessHost.h"
#include "NoSound.h"
#include "engine/Components.h"
#include "engine/JobDriver.h"
#include "engine/SelectionDriver.h"
#include "formats/OutputPanel.h"
#include "library/AddFiles.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "shell/widgets/InputBoxes.h"
#include "ui/BatchConverter.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <map>

namespace {

using namespace Sonmira;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

constexpr double LongestGapAllowed = 100;  // ms of work
constexpr double GrowthAllowed = 2.5;      // of the cost of a record, from the smallest collection on
constexpr int LargestPart = 10000;

double ProcessorMs() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The longest time between two turns of the event loop, by the clock and by what this thread worked in it,
// which other work on the machine does not disturb.
class Gaps {
public:
    Gaps() {
        QObject::connect(&Tick, &QTimer::timeout, &Tick, [this] { Note(); });
        Tick.start(1);
        Since.start();
    }
    void End() {
        QApplication::processEvents();
        Note();
    }

    double LongestMs = 0;
    double LongestWorkMs = 0;

private:
    void Note() {
        const double now = ProcessorMs();
        LongestMs = std::max(LongestMs, static_cast<double>(Since.nsecsElapsed()) / 1e6);
        LongestWorkMs = std::max(LongestWorkMs, now - WorkedBefore);
        Since.start();
        WorkedBefore = now;
    }

    QTimer Tick;
    QElapsedTimer Since;
    double WorkedBefore = ProcessorMs();
};

class Bench {
public:
    // Does `work`, lets the window take it in, and prints a line.
    template <class Work>
    void Measure(const char* what, int records, Work&& work) {
        for (int n = 0; n < 3; ++n) QApplication::processEvents();
        Gaps gaps;
        const double start = ProcessorMs();
        work();
        gaps.End();
        const double cost = (ProcessorMs() - start) * 1000 / records;
        const double growth = cost / First.emplace(what, cost).first->second;
        const bool bad = growth > GrowthAllowed || gaps.LongestWorkMs > LongestGapAllowed;
        IsBad = IsBad || bad;
        std::printf("%8d %-28s %10.2f %8.2f %10.1f %10.1f%s\n", records, what, cost, growth, gaps.LongestMs,
                    gaps.LongestWorkMs, bad ? "  !" : "");
        std::fflush(stdout);
    }
    bool Failed() const { return IsBad; }

private:
    std::map<std::string, double> First;  // the cost of a record of the smallest collection
    bool IsBad = false;
};

void ClickNode(BatchConverter& window, const QString& key) {
    ConversionTree& tree = *window.Form().TreeView1;
    Q_EMIT tree.NodeClick(tree.NodeOf(key), {});
}

void MeasureWindow(Bench& bench, const fs::path& root, int count) {
    const QString source = FromNative((root / "in").string());
    // Folders of folders, of which one is removed.
    const int part = std::min(count, LargestPart);
    for (int n = 0; n < count / part; ++n) {
        MakeSmallFiles(root / "in" / ("part " + std::to_string(n)), part);
    }
    fs::create_directories(root / "out");

    BatchConverter window;
    window.show();
    BatchConverterForm& form = window.Form();
    form.Picture9->TextOutPath->SetText(FromNative((root / "out").string()));
    form.Picture9->ComboOutFormat->SelectPlace(-1);  // no output, so that only the window and the walk count

    const double before = ResidentBytes();
    bench.Measure("add", count, [&] { window.AddFolder(source); });
    const int records = window.Gathered().Records.UpperBound();
    const double bytes = (ResidentBytes() - before) / records;
    bench.Measure("open every folder", count, [&] { form.TreeView1->expandAll(); });
    ClickNode(window, source + u"\\part 0"_s);
    bench.Measure("remove a folder", part, [&] { form.removefromlist->trigger(); });
    window.NewConversion();

    // Each folder is opened as soon as it has a child, as if the user held the key for that.
    const auto opening =
        QObject::connect(form.TreeView1->model(), &QAbstractItemModel::rowsInserted, form.TreeView1,
                         [&](const QModelIndex& parent) { form.TreeView1->expand(parent); });
    bench.Measure("add, every folder open", count, [&] { window.AddFolder(source); });
    QObject::disconnect(opening);

    HeadlessHost host;
    Collection items;
    AddDirectory(items, host, source);
    NoSound none;
    CodecSet codecs;
    Sonmira::Run run;
    BatchRunView view(form, [&](bool enabled) { window.SetControlsEnabled(enabled); });
    const Components parts = codecs.Parts(none, none);
    bench.Measure("run over all", count, [&] { JobDriver(run, view, parts, items).RunAllConversions(); });
    bench.Measure("run over the selection", count,
                  [&] { SelectionDriver(run, view, parts, items).ConvertNode(source); });
    const int rows = form.ListViewFiles->Rows().RowCount();

    std::printf("%8d %-28s %10.0f\n", count, "bytes a record", bytes);
    if (rows != count || items.FileCount != count) {
        std::printf("%d rows of %d files\n", rows, count);
        std::exit(1);
    }
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    const QTemporaryDir settings;
    SettingsFolder = FromNative(settings.path().toStdString()) + u'\\';
    SettingsFile = SettingsFolder + u"Sonmira.ini"_s;
    WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, u" 0"_s);
    OverrideLanguageFolder(FromNative(SONMIRA_LANG));

    std::printf("%8s %-28s %10s %8s %10s %10s\n", "files", "what", "us/file", "x first", "gap ms",
                "its work");
    Bench bench;
    std::vector<int> counts;
    for (int n = 1; n < argc; ++n) counts.push_back(std::atoi(argv[n]));
    if (counts.empty()) counts = {1000, 10000, 30000};
    for (const int count : counts) {
        const QTemporaryDir folder;
        MeasureWindow(bench, folder.path().toStdString(), count);
    }
    return bench.Failed() ? 1 : 0;
}
