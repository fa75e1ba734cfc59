#include "MainWindowTest.h"
#include "support/Timing.h"

#include <QElapsedTimer>
#include <QTimer>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Stop : public MainWindowTest {
protected:
    Stop() {
        Open();
        Panel().TextOutPath->SetText(Folder.Path("out"));
        Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    }
};

TEST_F(Stop, AtATenthOfALongFileFreesTheControlsAtOnce) {
    MakeLongWav("Music/a.wav", 20);
    MakeLongWav("Music/b.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    QElapsedTimer sinceClick;
    int farthest = 0;  // percent, after the click
    QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, Window.get(), [&] {
        if (sinceClick.isValid()) farthest = std::max(farthest, Progress(1).chopped(2).toInt());
    });
    WhenReached(10, [&] {
        sinceClick.start();
        ClickToolbar(6);
    });
    ClickToolbar(5);
    ASSERT_TRUE(sinceClick.isValid());
    EXPECT_LT(farthest, 60) << "the file goes on to its end where nobody hears";
    if (LooksAtMilliseconds()) {
        EXPECT_LT(sinceClick.elapsed(), 250);
    }
    ASSERT_EQ(Rows().RowCount(), 1);
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(Progress(1), LanguageLines[96]);
    EXPECT_GT(ContentOf(Folder.Native("out/Music/a.mp3")).size(), 10000);
    EXPECT_TRUE(Form().ToolbarButton(5)->isEnabled());
    EXPECT_FALSE(Form().ToolbarButton(6)->isEnabled());
    EXPECT_FALSE(Window->State().Busy());
}

TEST_F(Stop, SkippingAFileGoesOnWithTheNext) {
    MakeLongWav("Music/a.wav", 20);
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand(Folder.Path("Music"));
    WhenReached(1, [&] { QTest::mouseClick(Form().StopImg, Qt::LeftButton); });
    ClickToolbar(5);
    ASSERT_EQ(Rows().RowCount(), 2);
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(IconOf(2), u"converted"_s);
}

TEST_F(Stop, TheInterfaceAnswersAllThroughARun) {
    MakeLongWav("Music/a.wav", 5);
    AddFolderByCommand(Folder.Path("Music"));
    // A screen that paints so slowly that no machine is through with many percents before the next answer.
    QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, Window.get(), [] { QTest::qSleep(3); });
    for (const QString& format : {u"Mp3"_s, u"Ogg"_s, u"Wav"_s}) {
        Panel().ComboOutFormat->SelectText(format);
        QTimer tick;
        QElapsedTimer since;
        QElapsedTimer whole;
        int ticks = 0;
        qint64 longest = 0;
        int percent = 0;
        int most = 0;  // percents between two answers
        QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
            if (ticks++ > 0) longest = std::max(longest, since.elapsed());
            since.start();
            if (!Window->State().Busy()) return;
            const int before = std::exchange(percent, Progress(1).chopped(2).toInt());
            most = std::max(most, percent - before);
        });
        tick.start(0);
        whole.start();
        ClickToolbar(5);
        const double seconds = static_cast<double>(whole.elapsed()) / 1000;
        tick.stop();
        EXPECT_EQ(IconOf(1), u"converted"_s);
        EXPECT_GT(percent, 60) << qPrintable(format);
        EXPECT_LT(most, 10) << qPrintable(format);
        if (LooksAtMilliseconds()) {
            EXPECT_GT(ticks, 10 * seconds) << qPrintable(format);
            EXPECT_LT(longest, 500) << qPrintable(format);
        }
        RecordProperty(format.toStdString() + " longest gap ms", std::to_string(longest));
    }
}

TEST_F(Stop, TheWindowRefusesToCloseDuringARunButKeepsItsSettings) {
    MakeLongWav("Music/a.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    bool closed = true;
    WhenReached(1, [&] {
        closed = CloseWindow();
        EXPECT_EQ(Setting(u"Format"_s), u"Mp3"_s);
        EXPECT_EQ(Setting(u"OutputPath"_s), Folder.Path("out") + u'\\');
        EXPECT_EQ(Setting(u"Modepath"_s), u"FALSE"_s);
        // The run goes on.
        WhenReached(2, [&] { ClickToolbar(6); });
    });
    ClickToolbar(5);
    EXPECT_FALSE(closed);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_TRUE(Ended.empty());
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
}

TEST_F(Stop, ClosingBeforeAnyFileWasAcceptedEndsTheRun) {
    for (int n = 0; n < 300; ++n)
        Folder.MakeFile("Music/bad" + QByteArray::number(n) + ".mp3", QByteArray(9000, 'x'));
    AddFolderByCommand(Folder.Path("Music"));
    // The event loop runs between two files only where it has not run for a moment.
    QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, Window.get(), [] { QTest::qSleep(20); });
    QTimer close;
    close.setSingleShot(true);
    QObject::connect(&close, &QTimer::timeout, Window.get(), [this] { CloseWindow(); });
    close.start(1);
    ClickToolbar(5);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_LT(Rows().RowCount(), 300);
}

TEST_F(Stop, CommandsDoNothingDuringARun) {
    MakeLongWav("Music/a.wav", 20);
    AddFolderByCommand(Folder.Path("Music"));
    int asked = 0;
    WhenReached(1, [&] {
        Dialogs().BrowseForFolder = [&](const QString& /*title*/) {
            ++asked;
            return QString();
        };
        Form().adddirectory->trigger();
        Form().mynew->trigger();
        Form().ConvertAll->trigger();
        Window->AddDrop({Folder.Path("Music/a.wav")});
        QTest::mouseClick(Form().ClearImg, Qt::LeftButton);
        EXPECT_EQ(Rows().RowCount(), 1);
        EXPECT_EQ(Window->Gathered().Records.UpperBound(), 2);
        ClickToolbar(6);
    });
    ClickToolbar(5);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(Rows().RowCount(), 1);
}

}  // namespace
}  // namespace Sonmira
