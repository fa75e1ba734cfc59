#include "platform/Clock.h"
#include "support/Tool.h"
#include "tags/MusicExplorer.h"
#include "tags/TagEditorial.h"
#include "ui/MainWindowTest.h"

#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// The tag editor over files of its own.
class TagEditor : public MainWindowTest {
public:
    TagEditor() {
        OverrideCurrentYear(2031);
        QByteArray lines;
        for (int n = 0; n < 101; ++n) lines += "line " + QByteArray::number(n) + '\n';
        Shipped.MakeFile("English.lng", lines);
        Open();
        Editor.emplace();
        Editor->show();
    }
    ~TagEditor() override {
        Editor.reset();
        OverrideCurrentYear(0);
    }

protected:
    QString Make(const QByteArray& name, const QByteArray& tag = "title=Old") {
        Folder.MakeFile("made/in.wav", WavOf(MakeTone(44100, 2, 22050, 440), WavKind::Signed16));
        Folder.MakeFolder("Music");
        const QByteArray file = Folder.Native("Music/" + name);
        const ToolResult made = RunTool(
            {"ffmpeg", "-v", "error", "-y", "-i", Folder.Native("made/in.wav"), "-metadata", tag, file});
        EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
        return Folder.Path("Music/" + name);
    }
    QByteArray TagBy(const QByteArray& name, const QByteArray& key) {
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "format_tags=" + key, "-of",
                        "default=nw=1:nk=1", Folder.Native("Music/" + name)})
            .Output.trimmed();
    }
    TagFields& Fields() { return *Editor->Fields; }
    MusicExplorer& Explorer() { return *Editor->Explorer1; }
    // The names of the files that the browser shows. It finds and sorts them on a thread of its own.
    QStringList ShownFiles() {
        QStringList names;
        QListView& list = *Explorer().Files;
        for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
            names.append(list.model()->index(row, 0, list.rootIndex()).data().toString());
        }
        return names;
    }
    void WaitForFiles(const QStringList& names) {
        Becomes([&] { return ShownFiles() == names; });
        ASSERT_EQ(ShownFiles(), names);
    }
    QModelIndex File(int row) {
        return Explorer().Files->model()->index(row, 0, Explorer().Files->rootIndex());
    }
    void Save() { QTest::mouseClick(Editor->Command1, Qt::LeftButton); }

    std::optional<TagEditorial> Editor;
};

TEST_F(TagEditor, ShowsTheMusicOfAFolderAndLoadsTheFileThatIsClicked) {
    Make("b.mp3", "title=Of B");
    Make("a.ogg", "title=Of A");
    Folder.MakeFile("Music/notes.txt");
    Explorer().ShowFolder(Folder.Path("Music"));
    EXPECT_EQ(Explorer().Folder(), Folder.Path("Music"));
    EXPECT_TRUE(Explorer().CurrentFolder->text().endsWith(u"Music"_s));
    WaitForFiles({u"a.ogg"_s, u"b.mp3"_s});
    EXPECT_FALSE(Editor->Command1->isEnabled());
    QTest::mouseClick(Explorer().Files->viewport(), Qt::LeftButton, {},
                      Explorer().Files->visualRect(File(0)).center());
    EXPECT_EQ(Editor->CurrentFile(), Folder.Path("Music/a.ogg"));
    EXPECT_EQ(Fields().infoTitle->text(), u"Of A"_s);
    EXPECT_TRUE(Editor->Command1->isEnabled());
    const QByteArray shot = qgetenv("SONMIRA_TEST_SHOTS");
    if (!shot.isEmpty()) {
        EXPECT_TRUE(Editor->grab().save(QFile::decodeName(shot + "/TagEditorial.png")));
    }
}

TEST_F(TagEditor, IsBrowsedByKeysAlone) {
    Make("b.mp3", "title=Of B");
    Make("a.ogg", "title=Of A");
    Folder.MakeFolder("Music/Below");
    Make("Below/c.mp3", "title=Of C");
    Explorer().ShowFolder(Folder.Path("Music"));
    WaitForFiles({u"a.ogg"_s, u"b.mp3"_s});
    Explorer().Files->setFocus();
    QTest::keyClick(Explorer().Files, Qt::Key_Home);
    QTest::keyClick(Explorer().Files, Qt::Key_Down);
    QTest::keyClick(Explorer().Files, Qt::Key_Return);
    EXPECT_EQ(Editor->CurrentFile(), Folder.Path("Music/b.mp3"));
    // Into the folder below and back.
    QTreeView& folders = *Explorer().Folders;
    folders.setFocus();
    EXPECT_TRUE(Becomes([&] { return folders.model()->rowCount(folders.currentIndex()) == 1; }));
    QTest::keyClick(&folders, Qt::Key_Down);
    EXPECT_EQ(Explorer().Folder(), Folder.Path("Music/Below"));
    WaitForFiles({u"c.mp3"_s});
    QTest::keyClick(&folders, Qt::Key_Up);
    EXPECT_EQ(Explorer().Folder(), Folder.Path("Music"));
}

TEST_F(TagEditor, SavesAsOftenAsItIsAsked) {
    Editor->Load(Make("a.ogg"));
    for (const char* title : {"First", "Second"}) {
        Fields().infoTitle->setText(QString::fromLatin1(title));
        Save();
        EXPECT_TRUE(Editor->Command1->isEnabled());
        const QByteArray seen = RunTool({"vorbiscomment", "-l", Folder.Native("Music/a.ogg")}).Output;
        EXPECT_TRUE(seen.contains(QByteArray("=") + title)) << seen.constData();
    }
    EXPECT_EQ(Fields().infoYear->text(), u"2031"_s);
    EXPECT_EQ(Fields().infoTrack->text(), u"1"_s);
}

TEST_F(TagEditor, SavesNothingWhereTheYearOrTheTrackIsNoNumber) {
    Editor->Load(Make("a.ogg"));
    const QByteArray before = ContentOf(Folder.Native("Music/a.ogg"));
    Fields().infoTitle->setText(u"New"_s);
    for (const QString& track : {u"one"_s, u"40000"_s}) {
        Fields().infoTrack->setText(track);
        Save();
    }
    Fields().infoTrack->setText(u"1"_s);
    for (const QString& year : {u"MMX"_s, u"3000000000"_s}) {
        Fields().infoYear->setText(year);
        Save();
    }
    EXPECT_EQ(ContentOf(Folder.Native("Music/a.ogg")), before);
    EXPECT_TRUE(Editor->Command1->isEnabled());
}

TEST_F(TagEditor, LeavesTheTrackOfAWmaWhereItIs) {
    const QString path = Make("a.wma", "track=4");
    for (int round = 0; round < 2; ++round) {
        Editor->Load(path);
        EXPECT_EQ(Fields().infoTrack->text(), u"3"_s) << "as the object counts";
        Save();
        EXPECT_EQ(Fields().infoTrack->text(), u"3"_s);
        EXPECT_EQ(TagBy("a.wma", "track"), "4");
    }
}

TEST_F(TagEditor, EmptiesItsFieldsAndItsButtonAfterAFailedLoad) {
    Editor->Load(Make("a.mp3"));
    Fields().infoGenre->SelectText(u"Jazz"_s);
    Fields().infoTitle->setText(u"typed"_s);
    Editor->Load(Folder.Path("Music/gone.mp3"));
    for (const QLineEdit* field :
         {Fields().infoTitle, Fields().infoArtist, Fields().infoAlbum, Fields().infoGenreS,
          Fields().infoCopyright, Fields().infoComment, Fields().infoYear, Fields().infoTrack,
          Fields().infoComposer, Fields().infoURL, Fields().infoEncodedBy, Fields().infoOriginalArtist}) {
        EXPECT_EQ(field->text(), QString()) << qPrintable(field->objectName());
    }
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Jazz"_s);
    EXPECT_FALSE(Editor->Command1->isEnabled());
    Editor->Load(Folder.Path("Music/a.mp3"));
    EXPECT_TRUE(Editor->Command1->isEnabled());
}

TEST_F(TagEditor, BeginsWithVersionOneAndWithoutTheSixFieldsThatOnlyTheOtherHas) {
    const auto six = {Fields().infoGenreS, Fields().infoCopyright, Fields().infoComposer,
                      Fields().infoURL,    Fields().infoEncodedBy, Fields().infoOriginalArtist};
    EXPECT_TRUE(Fields().Option1[0]->isChecked());
    for (const QLineEdit* field : six) EXPECT_FALSE(field->isEnabled()) << qPrintable(field->objectName());
    Editor->Load(Make("a.mp3", "title=Of version two"));
    EXPECT_EQ(Fields().infoTitle->text(), QString());
    Fields().Option1[1]->click();
    EXPECT_EQ(Fields().infoTitle->text(), u"Of version two"_s) << "the file is loaded again";
    for (const QLineEdit* field : six) EXPECT_TRUE(field->isEnabled()) << qPrintable(field->objectName());
    Editor.reset();
    Editor.emplace();
    EXPECT_TRUE(Fields().Option1[0]->isChecked()) << "at each opening";
}

TEST_F(TagEditor, TakesAGenreAsTextUnderVersionTwoOnly) {
    EXPECT_EQ(Fields().infoGenre->count(), 148);
    Fields().infoGenre->SelectText(u"Jazz"_s);
    EXPECT_EQ(Fields().infoGenreS->text(), QString());
    Fields().Option1[1]->click();
    Fields().infoGenre->SelectText(u"Rock"_s);
    EXPECT_EQ(Fields().infoGenreS->text(), u"Rock"_s);
}

TEST_F(TagEditor, HoldsItsFieldsInTheOneFrameAndTheVersionsInTheOther) {
    for (const QWidget* option : Fields().Option1) EXPECT_EQ(option->parentWidget(), Editor->Frame1);
    for (const QWidget* field : std::initializer_list<QWidget*>{Fields().infoTitle, Fields().infoGenre,
                                                                Fields().infoOriginalArtist}) {
        EXPECT_EQ(field->parentWidget(), Editor->Frame2);
    }
    EXPECT_EQ(Editor->Frame1->parentWidget(), Editor->Frame2);
}

TEST_F(TagEditor, HasItsCaptionsFromTheLanguageFile) {
    const auto line = [](int n) { return u"line %1"_s.arg(n); };
    EXPECT_EQ(Explorer().FilesCaption->text(), line(26));
    EXPECT_EQ(Explorer().FoldersCaption->text(), line(27));
    EXPECT_EQ(Editor->Frame2->title(), line(28));
    EXPECT_EQ(Editor->Frame1->title(), line(29));
    int expected = 30;
    for (const char16_t* name :
         {u"Label8", u"Label3", u"Label5", u"Label11", u"Label21", u"Label1", u"Label18", u"Label20",
          u"Label17", u"Label15", u"Label16", u"Label19", u"Label22"}) {
        const auto* label = Editor->findChild<QLabel*>(QString::fromUtf16(name));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), line(expected++));
    }
    EXPECT_EQ(Editor->Command1->text(), line(43));
}

}  // namespace
}  // namespace Sonmira
