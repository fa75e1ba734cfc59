// The list of a run's rows.
#include "CollectionTest.h"
#include "kit/Icons.h"
#include "kit/Splitter.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class CollectionRows : public CollectionTest {
protected:
    CollectionRows() {
        Open();
        Panel().TextOutPath->SetText(Folder.Path("out"));
        Panel().ComboOutFormat->SelectText(u"Wav"_s);
    }
    FileList& List() { return *Form().ListViewFiles; }
    // Returns whether a menu came up.
    bool ClickRow(int row, Qt::MouseButton button) {
        const QPoint place = List().visualRect(Rows().index(row - 1, FileListModel::FilenameColumn)).center();
        QTest::mouseClick(List().viewport(), button, Qt::NoModifier, place);
        const bool shown = Form().popupmenuy->isVisible();
        Form().popupmenuy->hide();
        return shown;
    }
    // Names without any sound: each has its row and fails at once.
    void RunOverBrokenFiles(int count) {
        for (int n = 0; n < count; ++n) Folder.MakeFile("Music/" + QByteArray::number(n) + ".wav");
        AddFolderByCommand(Folder.Path("Music"));
        ClickToolbar(5);
    }
};

TEST_F(CollectionRows, AreNumberedWithThreeDigitsAtLeast) {
    RunOverBrokenFiles(1001);
    ASSERT_EQ(Rows().RowCount(), 1001);
    for (const auto& [row, number] : {std::pair(1, u"001."_s), std::pair(99, u"099."_s),
                                      std::pair(999, u"999."_s), std::pair(1000, u"1000."_s)}) {
        EXPECT_EQ(Rows().Text(row, FileListModel::TrackColumn), number);
    }
    EXPECT_TRUE(List().viewport()->rect().contains(List().visualRect(Rows().index(1000, 0))));
}

TEST_F(CollectionRows, ShowADifferentPictureForEachState) {
    Rows().AddRow();
    std::vector<QImage> pictures;
    for (const QString& icon : {u"conversion"_s, u"converted"_s, u"error"_s}) {
        Rows().SetIcon(1, icon);
        const auto shown =
            Rows().index(0, FileListModel::TrackColumn).data(Qt::DecorationRole).value<QIcon>();
        const QImage picture = shown.pixmap(QSize(16, 16)).toImage();
        EXPECT_EQ(picture, OwnIcon(u"row-"_s + icon).pixmap(QSize(16, 16)).toImage());
        EXPECT_FALSE(picture.isNull()) << icon.toStdString();
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), picture), 0) << icon.toStdString();
        pictures.push_back(picture);
    }
}

TEST_F(CollectionRows, GoWithTheNextRunAndWithTheClearButton) {
    RunOverBrokenFiles(2);
    ClickToolbar(5);
    EXPECT_EQ(Rows().RowCount(), 2);
    QTest::mouseClick(Form().ClearImg, Qt::LeftButton);
    EXPECT_EQ(Rows().RowCount(), 0);
    EXPECT_EQ(Records().UpperBound(), 3) << "the collection stays";
}

TEST_F(CollectionRows, ShowNoMenuWhileNothingRuns) {
    RunOverBrokenFiles(2);
    EXPECT_FALSE(ClickRow(1, Qt::RightButton));
    EXPECT_FALSE(ClickRow(1, Qt::LeftButton));
}

TEST_F(CollectionRows, OfferToSkipTheFileInHandByARightClick) {
    MakeLongWav("Music/a.wav", 20);
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand(Folder.Path("Music"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    ASSERT_EQ(Form().popupmenuy->actions(), QList<QAction*>{Form().cancelonefile});
    WhenReached(1, [&] {
        EXPECT_FALSE(ClickRow(1, Qt::LeftButton));
        EXPECT_TRUE(ClickRow(1, Qt::RightButton));
        EXPECT_FALSE(Window->State().SkipCurrentFile());
        Form().cancelonefile->trigger();
        EXPECT_TRUE(Window->State().SkipCurrentFile());
    });
    ClickToolbar(5);
    ASSERT_EQ(Rows().RowCount(), 2);
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(Progress(1), LanguageLines[96]);
    EXPECT_EQ(IconOf(2), u"converted"_s);
}

TEST_F(CollectionRows, GiveTheNameWhateverWidthTheOthersLeave) {
    const auto expectFilled = [this] {
        EXPECT_EQ(List().columnWidth(FileListModel::TrackColumn), 1235 / 15);
        EXPECT_EQ(List().columnWidth(FileListModel::ProgressColumn), 3175 / 15);
        EXPECT_EQ(List().columnWidth(FileListModel::FilenameColumn),
                  List().width() - 1235 / 15 - 3175 / 15 - (280 + 7) / 15);
    };
    std::set<int> widths;
    for (const int left : {300, 200, 150}) {
        Form().Splitter1->SetSplitterPos(left * 15);
        QApplication::processEvents();
        expectFilled();
        widths.insert(List().columnWidth(FileListModel::FilenameColumn));
    }
    EXPECT_EQ(widths.size(), 3U);
    // With a bar to scroll by, too.
    RunOverBrokenFiles(100);
    QApplication::processEvents();
    expectFilled();
}

TEST_F(CollectionRows, AreClearedBeforeAnyFileWasAcceptedAndCountAnewAfterwards) {
    constexpr int Broken = 50;
    for (int n = 0; n < Broken; ++n) Folder.MakeFile("Music/a" + QByteArray::number(n) + ".wav");
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand(Folder.Path("Music"));
    int cleared = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
        if (cleared > 0 || Rows().RowCount() == 0) return;
        cleared = Rows().RowCount();
        QTest::mouseClick(Form().ClearImg, Qt::LeftButton);
        EXPECT_EQ(Rows().RowCount(), 0);
    });
    turn.start(0);
    ClickToolbar(5);
    ASSERT_GT(cleared, 0);
    ASSERT_EQ(Rows().RowCount(), Broken + 1 - cleared);
    EXPECT_EQ(Rows().Text(1, FileListModel::TrackColumn), u"001."_s);
    EXPECT_EQ(Progress(Rows().RowCount()), u"100 %"_s);
    EXPECT_EQ(IconOf(Rows().RowCount()), u"converted"_s);
    EXPECT_EQ(Form().Label29->text(), u"%1 / %1"_s.arg(Broken + 1));
}

TEST_F(CollectionRows, TakeNoHarmFromAWriteToOneThatIsGone) {
    BatchRunView view(Form(), [](bool /*enabled*/) {});
    const int row = view.AddRow();
    view.ClearRows();
    view.SetRowNumber(row, 1);
    view.SetRowName(row, u"a.wav"_s);
    view.SetRowPercent(row, 7);
    view.SetRowIcon(row, u"error");
    view.ScrollToRow(row);
    EXPECT_EQ(Progress(row), QString());
    EXPECT_EQ(Rows().RowCount(), 0);
    EXPECT_EQ(view.AddRow(), 1);
    EXPECT_EQ(Progress(1), QString());
    EXPECT_EQ(IconOf(1), QString());
}

}  // namespace
}  // namespace Sonmira
