// The list with a thousand rows against one with a hundred, by the clock of the processor.
#include "AudiotoolTest.h"
#include "support/Timing.h"

#include <QHeaderView>
#include <QScrollBar>

#include <ctime>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr int Hundred = 100;
constexpr int Thousand = 1000;
// A sixtieth of a second is what a screen waits for its next picture.
constexpr double FrameMs = 1000.0 / 60;
// What looks at every row once costs ten times as much with ten times the rows, and what looks at every row
// for every row a hundred times. Between them there is room for a processor that others disturb.
constexpr double MostGrowth = 30;

double ProcessorMs() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class ThousandRows : public AudiotoolTest {
protected:
    ThousandRows() {
        Open();
        MakeTracks(Thousand);
    }
    // The middle one of the times that a step takes in milliseconds, painting included. No single step may
    // hold the screen longer than a person notices.
    template <class Step>
    double Measure(const char* what, int steps, Step&& step) {
        std::vector<double> times;
        for (int n = 0; n < steps; ++n) {
            const double start = ProcessorMs();
            step(n);
            QApplication::processEvents();
            times.push_back(ProcessorMs() - start);
        }
        std::sort(times.begin(), times.end());
        const double middle = times[times.size() / 2];
        std::printf("%5d rows, %-24s %8.2f ms each, %8.2f ms longest\n", Rows().Count(), what, middle,
                    times.back());
        RecordProperty(std::string(what) + " ms each", std::to_string(middle));
        RecordProperty(std::string(what) + " ms longest", std::to_string(times.back()));
        if (LooksAtMilliseconds()) {
            EXPECT_LT(times.back(), 100) << what;
        }
        return middle;
    }
    // Takes the measure with a hundred rows and with a thousand. On a quiet machine a step takes less than
    // `most` milliseconds.
    void Compare(const std::function<double()>& measure, double most) {
        AddUpTo(Hundred);
        const double few = measure();
        AddUpTo(Thousand);
        const double many = measure();
        EXPECT_LT(many, MostGrowth * std::max(few, 0.1));
        if (LooksAtMilliseconds()) {
            EXPECT_LT(many, most);
        }
    }
    void AddUpTo(int count) {
        for (int n = Rows().Count() + 1; n <= count; ++n) Window->AddFileToList(Folder.Path(TrackName(n)));
    }
    // Of all rows, by the keys.
    double DeleteAll() {
        QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
        const int count = Rows().Count();
        const double start = ProcessorMs();
        PressDelete();
        const double took = ProcessorMs() - start;
        std::printf("deleting %d rows %.0f ms\n", count, took);
        RecordProperty("deleting ms", std::to_string(took));
        EXPECT_EQ(Rows().Count(), 0);
        return took;
    }
};

TEST_F(ThousandRows, AreAddedWithoutAWait) {
    std::vector<double> hundreds;
    for (int rows = Hundred; rows <= Thousand; rows += Hundred) {
        const double start = ProcessorMs();
        AddUpTo(rows);
        hundreds.push_back((ProcessorMs() - start) / Hundred);
    }
    std::printf("adding, a row of the first hundred %.2f ms, of the last %.2f ms\n", hundreds.front(),
                hundreds.back());
    RecordProperty("first hundred ms a row", std::to_string(hundreds.front()));
    RecordProperty("last hundred ms a row", std::to_string(hundreds.back()));
    EXPECT_EQ(Rows().Count(), Thousand);
    EXPECT_EQ(Window->Bars().HighestElement(), Thousand - 1);
    EXPECT_LT(hundreds.back(), MostGrowth * hundreds.front());
    if (LooksAtMilliseconds()) {
        EXPECT_LT(hundreds.back(), FrameMs / 2);
    }
}

TEST_F(ThousandRows, AreScrolledSmoothly) {
    QScrollBar& bar = *List().verticalScrollBar();
    Compare(
        [&] {
            bar.setValue(0);
            return Measure("scrolling by a row", 80, [&](int n) { bar.setValue(n + 1); });
        },
        FrameMs);
    Measure("scrolling by a page", 60, [&](int) { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); });
    const double jump = Measure("jumping", 50, [&](int n) { bar.setValue(n % 2 == 0 ? bar.maximum() : 0); });
    if (LooksAtMilliseconds()) {
        EXPECT_LT(jump, FrameMs);
    }
    EXPECT_TRUE(Bar(0).isVisible());
    EXPECT_EQ(Bar(Thousand - 1).isHidden(), false);
    bar.setValue(bar.maximum());
    EXPECT_TRUE(Bar(0).isHidden());
}

TEST_F(ThousandRows, ColumnsAreResizedSmoothly) {
    QHeaderView& header = *List().horizontalHeader();
    Compare(
        [&] {
            const int width = header.sectionSize(AudiotoolRows::NameColumn);
            return Measure("resizing a column", 50,
                           [&](int n) { header.resizeSection(AudiotoolRows::NameColumn, width - n); });
        },
        FrameMs);
    EXPECT_EQ(Bar(Thousand - 1).width(), List().visualRect(Rows().index(Thousand - 1, 3)).width());
}

TEST_F(ThousandRows, KeysWalkThroughThemSmoothly) {
    Compare(
        [&] {
            Select(1);
            return Measure("arrow keys", 80, [&](int) { QTest::keyClick(&List(), Qt::Key_Down); });
        },
        FrameMs);
}

TEST_F(ThousandRows, AreDeletedInAMoment) {
    AddUpTo(Hundred);
    const double few = DeleteAll();
    AddUpTo(Thousand);
    const double many = DeleteAll();
    EXPECT_LT(many / Thousand, MostGrowth * few / Hundred);
    if (LooksAtMilliseconds()) {
        EXPECT_LT(many, 5000);
    }
}

TEST_F(ThousandRows, AProgressOfOneRowCostsNothing) {
    Compare(
        [&] {
            return Measure("a percent of a row", 100, [&](int n) {
                Rows().SetState(3, {u"conversion"_s, u"%1 %"_s.arg(n), n});
            });
        },
        FrameMs / 4);
}

}  // namespace
}  // namespace Sonmira
