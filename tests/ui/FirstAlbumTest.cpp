#include "CollectionTest.h"
#include "support/Tool.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class FirstAlbum : public CollectionTest {
protected:
    FirstAlbum() {
        const QByteArray wav = WavOf(MakeTone(44100, 2, 20 * 44100, 440), WavKind::Signed16);
        Folder.MakeFile("Music/a.wav", wav);
        Folder.MakeFile("Music/note.txt", "no music");
        Folder.MakeFolder("Music/Empty");
        Folder.MakeFolder("Music/Rock");
        RunTool({"lame", "--quiet", Folder.Native("Music/a.wav"), Folder.Native("Music/B.Mp3")});
        RunTool({"oggenc", "-Q", "-o", Folder.Native("Music/Rock/x.ogg"), Folder.Native("Music/a.wav")});
        Open();
        Panel().TextOutPath->SetText(Folder.Path("out"));
        Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    }
};

TEST_F(FirstAlbum, AFolderAddedByCommandShowsItsNodesAndCounts) {
    AddFolderByCommand(Folder.Path("Music"));
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"Music"_s, u"a.wav"_s, u"B.Mp3"_s, u"Empty"_s,
                                    u"Rock"_s, u"x.ogg"_s}));
    EXPECT_EQ(Form().LabelDirCount->text(), u"3"_s);
    EXPECT_EQ(Form().Label4->text(), u"3"_s);
    EXPECT_TRUE(Form().StatusPanel1->text().isEmpty());
}

TEST_F(FirstAlbum, ARunThatRemovesSourcesSaysHowManyLieInTheTrash) {
    EXPECT_FALSE(Form().StatusPanel2->isVisible());
    AddFolderByCommand(Folder.Path("Music/Rock"));
    const qint64 size = ContentOf(Folder.Native("Music/Rock/x.ogg")).size();
    Panel().Check2->setChecked(true);
    ClickToolbar(5);
    EXPECT_TRUE(Form().StatusPanel2->isVisible());
    EXPECT_EQ(Form().StatusPanel2->text(), u"In the trash: 1 (%1)"_s.arg(QLocale().formattedDataSize(size)));
    Panel().Check2->setChecked(false);
    ClickToolbar(5);
    EXPECT_FALSE(Form().StatusPanel2->isVisible()) << "the next run has nothing to say";
}

TEST_F(FirstAlbum, ANewConversionTakesAwayWhatARunSaidOfTheTrash) {
    AddFolderByCommand(Folder.Path("Music/Rock"));
    Panel().Check2->setChecked(true);
    ClickToolbar(5);
    ASSERT_TRUE(Form().StatusPanel2->isVisible());
    Window->NewConversion();
    EXPECT_FALSE(Form().StatusPanel2->isVisible());
    EXPECT_EQ(Form().StatusPanel2->text(), QString());
}

TEST_F(FirstAlbum, ConvertsIntoTheMirroredFoldersWithRisingPercentages) {
    AddFolderByCommand(Folder.Path("Music"));
    std::vector<QStringList> seen(4);
    QObject::connect(&Rows(), &QAbstractItemModel::dataChanged, Window.get(), [&](const QModelIndex& cell) {
        if (cell.column() != FileListModel::ProgressColumn) return;
        const auto row = static_cast<std::size_t>(cell.row() + 1);
        const QString text = Progress(cell.row() + 1);
        if (seen.at(row).isEmpty() || seen.at(row).last() != text) seen.at(row).append(text);
    });
    ClickToolbar(5);

    ASSERT_EQ(Rows().RowCount(), 3);
    const QStringList names = {u"a.wav"_s, u"B.Mp3"_s, u"x.ogg"_s};
    for (int row = 1; row <= 3; ++row) {
        EXPECT_EQ(Rows().Text(row, FileListModel::TrackColumn), u"00%1."_s.arg(row));
        EXPECT_EQ(Rows().Text(row, FileListModel::FilenameColumn), names[row - 1]);
        EXPECT_EQ(IconOf(row), u"converted"_s);
        const QStringList& texts = seen[static_cast<std::size_t>(row)];
        EXPECT_EQ(texts.first(), u"0 %"_s);
        EXPECT_EQ(texts.last(), u"100 %"_s);
        EXPECT_GE(texts.size(), 10) << "several percentages on the way";
        int before = -1;
        for (const QString& text : texts) {
            const int percent = text.chopped(2).toInt();
            EXPECT_GT(percent, before);
            before = percent;
        }
    }
    EXPECT_EQ(Form().Label29->text(), u"3 / 3"_s);
    for (const char* output : {"out/Music/a.mp3", "out/Music/B.mp3", "out/Music/Rock/x.mp3"}) {
        const ToolResult probe = RunTool({"ffprobe", "-v", "error", "-show_entries", "stream=codec_name",
                                          "-of", "csv=p=0", Folder.Native(output)});
        EXPECT_EQ(probe.Output.trimmed(), "mp3") << output << probe.Errors.constData();
    }
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/Empty")));
}

TEST_F(FirstAlbum, ARealDropOnTheTreeAddsFilesAndFolders) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromUtf8(Folder.Native("Music/Rock"))),
                  QUrl::fromLocalFile(QString::fromUtf8(Folder.Native("Music/a.wav"))),
                  QUrl(u"https://example.org/z.wav"_s)});
    EXPECT_TRUE(Drop(data));
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"Rock"_s, u"x.ogg"_s, u"a.wav"_s}));
}

TEST_F(FirstAlbum, ADropKeepsNamesThatAreNoText) {
    Folder.MakeFile("raw\xE9.wav");
    QMimeData data;
    data.setUrls({QUrl::fromEncoded("file://" + Folder.Native("raw%E9.wav"))});
    EXPECT_TRUE(Drop(data));
    EXPECT_TRUE(Window->Gathered().Records.HoldsPath(Folder.Path("raw\xE9.wav")));
}

}  // namespace
}  // namespace Sonmira
