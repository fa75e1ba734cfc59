// The tag page as a user works with it: clicks in the collection, versions, saves one after the other.
#include "platform/Clock.h"
#include "support/Tool.h"
#include "tags/TagPage.h"
#include "ui/MainWindowTest.h"
#include "ui/TabStrip.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class TagPageUse : public MainWindowTest {
public:
    TagPageUse() {
        OverrideCurrentYear(2031);
        Open();
        Form().SSTab1->setCurrentIndex(1);
    }
    ~TagPageUse() override { OverrideCurrentYear(0); }

protected:
    // A tagged file in the folder "music"; the second one takes the folder into the collection, too.
    QString Make(const QByteArray& name) {
        Folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 3 * 44100, 440), WavKind::Signed16));
        Folder.MakeFolder("music");
        const ToolResult made =
            RunTool({"ffmpeg", "-v", "error", "-y", "-i", Folder.Native("in.wav"), "-metadata",
                     "title=Title of " + name, Folder.Native("music/" + name)});
        EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
        return Folder.Path("music/" + name);
    }
    QString Add(const QByteArray& name) {
        const QString path = Make(name);
        Window->AddFolder(Folder.Path("music"));
        return path;
    }
    void ClickNode(const QString& text) {
        for (QTreeWidgetItemIterator it(Form().TreeView1); *it != nullptr; ++it) {
            if ((*it)->text(0) != text) continue;
            Form().TreeView1->scrollToItem(*it);
            QTest::mouseClick(Form().TreeView1->viewport(), Qt::LeftButton, {},
                              Form().TreeView1->visualItemRect(*it).center());
            return;
        }
        ADD_FAILURE() << "no node " << text.toStdString();
    }
    QByteArray Probe(const QByteArray& name) {
        return RunTool(
                   {"ffprobe", "-v", "error", "-show_entries", "format_tags", Folder.Native("music/" + name)})
            .Output;
    }
    TagPanelForm& Page() { return Form().TagPage; }
    TagFields& Fields() { return *Page().Fields; }
    void Press(int button) { Page().ToolbarButton(button)->trigger(); }
    void Save() { QTest::mouseClick(Page().Command3, Qt::LeftButton); }
};

TEST_F(TagPageUse, AClickOnAFileShowsItsTag) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    EXPECT_EQ(Fields().infoTitle->text(), u"Title of a.mp3"_s);
    EXPECT_TRUE(Page().Command3->isEnabled());
}

TEST_F(TagPageUse, AClickOnAFolderEmptiesTheFieldsAndKeepsTheGenre) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().infoGenre->SelectText(u"Jazz"_s);
    ClickNode(Nodes().at(1));
    EXPECT_EQ(Fields().infoTitle->text(), QString());
    EXPECT_EQ(Fields().infoTrack->text(), QString());
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Jazz"_s);
    EXPECT_FALSE(Page().Command3->isEnabled());
}

TEST_F(TagPageUse, AFileSelectedBeforeTheTabOpensIsShownAtTheNextClickOnly) {
    Add("a.mp3");
    Form().SSTab1->setCurrentIndex(0);
    ClickNode(u"a.mp3"_s);
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_EQ(Fields().infoTitle->text(), QString());
    ClickNode(u"a.mp3"_s);
    EXPECT_EQ(Fields().infoTitle->text(), u"Title of a.mp3"_s);
}

TEST_F(TagPageUse, ReturningToTheTabGoesBackToVersionTwoAndShowsTheFileAgain) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().Option1[0]->click();
    EXPECT_EQ(Fields().infoTitle->text(), QString()) << "there is no tag of version one";
    Form().SSTab1->setCurrentIndex(0);
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_TRUE(Fields().Option1[1]->isChecked());
    EXPECT_EQ(Fields().infoTitle->text(), u"Title of a.mp3"_s);
}

TEST_F(TagPageUse, AnEmptyOrZeroYearAndTrackAreSavedAsThisYearAndTheFirst) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    for (const QString& none : {QString(), u"0"_s}) {
        Fields().infoYear->setText(none);
        Fields().infoTrack->setText(none);
        Press(7);
        EXPECT_EQ(Fields().infoYear->text(), u"2031"_s);
        EXPECT_EQ(Fields().infoTrack->text(), u"1"_s);
    }
    EXPECT_TRUE(Probe("a.mp3").contains("date=2031"));
    EXPECT_TRUE(Probe("a.mp3").contains("track=1"));
}

TEST_F(TagPageUse, AYearOfLettersSavesNothingAndLeavesTheButton) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().infoTitle->setText(u"New"_s);
    for (const QString& year : {u"MMX"_s, u"3000000000"_s}) {
        Fields().infoYear->setText(year);
        Save();
        EXPECT_TRUE(Page().Command3->isEnabled());
    }
    EXPECT_TRUE(Probe("a.mp3").contains("title=Title of a.mp3"));
}

TEST_F(TagPageUse, TheButtonSavesOnceAndTheToolbarAsOftenAsItIsPressed) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().infoTitle->setText(u"One"_s);
    Save();
    Fields().infoTitle->setText(u"Two"_s);
    EXPECT_FALSE(Page().Command3->isEnabled()) << "typing frees nothing";
    Save();
    EXPECT_TRUE(Probe("a.mp3").contains("title=One"));
    Press(7);
    EXPECT_TRUE(Probe("a.mp3").contains("title=Two"));
    Fields().infoTitle->setText(u"Three"_s);
    Press(7);
    EXPECT_TRUE(Probe("a.mp3").contains("title=Three"));
    ClickNode(u"a.mp3"_s);
    EXPECT_TRUE(Page().Command3->isEnabled());
}

TEST_F(TagPageUse, FieldsThatVersionOneLocksAreSentAllTheSame) {
    // Vorbis comments have one kind, so that what was sent can be seen.
    Add("a.ogg");
    ClickNode(u"a.ogg"_s);
    Fields().Option1[0]->click();
    Fields().infoComposer->setText(u"Composer"_s);
    Fields().infoURL->setText(u"https://example.org/"_s);
    EXPECT_FALSE(Fields().infoComposer->isEnabled());
    Press(7);
    const QByteArray comments = RunTool({"vorbiscomment", "-l", Folder.Native("music/a.ogg")}).Output;
    EXPECT_TRUE(comments.toUpper().contains("COMPOSER=COMPOSER")) << comments.constData();
    EXPECT_TRUE(comments.contains("https://example.org/")) << comments.constData();
}

TEST_F(TagPageUse, AFileThatCannotBeWrittenLeavesTheButtonForAnotherTry) {
    const QString path = Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().infoTitle->setText(u"New"_s);
    const QByteArray aside = Folder.Native("aside.mp3");
    std::filesystem::rename(Folder.Native("music/a.mp3").toStdString(), aside.toStdString());
    Save();
    EXPECT_TRUE(Page().Command3->isEnabled());
    std::filesystem::rename(aside.toStdString(), Folder.Native("music/a.mp3").toStdString());
    Save();
    EXPECT_FALSE(Page().Command3->isEnabled());
    EXPECT_TRUE(Probe("a.mp3").contains("title=New"));
}

TEST_F(TagPageUse, ASaveByTheToolbarThatFailsLeavesAButtonThatWasOffOff) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    ClickNode(u"music"_s);
    ASSERT_FALSE(Page().Command3->isEnabled());
    Fields().infoYear->setText(u"2001"_s);
    Press(7);
    EXPECT_FALSE(Page().Command3->isEnabled());
}

TEST_F(TagPageUse, AGenreThatIsTypedInFullIsThatOfTheList) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().Option1[0]->click();
    Fields().infoTitle->setText(u"Title"_s);
    Fields().infoGenre->setEditText(u"Rock"_s);
    Press(7);
    EXPECT_EQ(ContentOf(Folder.Native("music/a.mp3")).back(), char{17});
}

TEST_F(TagPageUse, AGenreClickUnderVersionOneLeavesTheGenresText) {
    Fields().infoGenre->SelectText(u"Jazz"_s);
    EXPECT_EQ(Fields().infoGenreS->text(), u"Jazz"_s);
    Fields().Option1[0]->click();
    Fields().infoGenre->SelectText(u"Rock"_s);
    EXPECT_EQ(Fields().infoGenreS->text(), u"Jazz"_s);
}

TEST_F(TagPageUse, CopyOfAnEmptyPageEmptiesTheMemory) {
    Press(1);
    for (const QLabel* label : Page().Picture4->Label25) EXPECT_EQ(label->text(), QString());
    EXPECT_FALSE(Page().Picture4->isVisible());
}

TEST_F(TagPageUse, PasteNeitherSavesNorFreesTheButton) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Press(1);
    Save();
    Fields().infoTitle->setText(u"typed"_s);
    Press(2);
    EXPECT_EQ(Fields().infoTitle->text(), u"Title of a.mp3"_s);
    EXPECT_FALSE(Page().Command3->isEnabled());
}

TEST_F(TagPageUse, TheTagOfOneFileGoesOntoAnother) {
    Make("b.flac");
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Fields().infoGenre->SelectText(u"Jazz"_s);
    Fields().infoComposer->setText(u"Composer"_s);
    Press(1);
    ClickNode(u"b.flac"_s);
    EXPECT_EQ(Fields().infoTitle->text(), u"Title of b.flac"_s);
    Press(2);
    Press(7);
    const QByteArray tags =
        RunTool({"metaflac", "--export-tags-to=-", Folder.Native("music/b.flac")}).Output.toUpper();
    for (const char* tag : {"TITLE=TITLE OF A.MP3", "GENRE=JAZZ", "COMPOSER=COMPOSER"}) {
        EXPECT_TRUE(tags.contains(tag)) << tag << '\n' << tags.constData();
    }
}

TEST_F(TagPageUse, AnyLabelOfTheMemoryHidesItAndSoDoesAClickOnANode) {
    Add("a.mp3");
    TagMemory& memory = *Page().Picture4;
    for (QLabel* label : {memory.Label23, memory.Label24[0], memory.Label24[12], memory.Label25[7]}) {
        Press(3);
        ASSERT_TRUE(memory.isVisible());
        QTest::mouseClick(label, Qt::LeftButton);
        EXPECT_FALSE(memory.isVisible()) << label->objectName().toStdString();
    }
    Press(3);
    QTest::mouseClick(&memory, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_FALSE(memory.isVisible());
    Press(3);
    ClickNode(u"a.mp3"_s);
    EXPECT_FALSE(memory.isVisible());
    Press(3);
    Form().SSTab1->setCurrentIndex(0);
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_FALSE(memory.isVisible());
}

TEST_F(TagPageUse, TheMemoryHasGoneWhenAButtonOfTheMainToolbarOpensItsWindow) {
    Press(3);
    ASSERT_TRUE(Page().Picture4->isVisible());
    bool isShown = true;
    const ModalAnswer about(u"About"_s, [&](QWidget& window) {
        isShown = Page().Picture4->isVisible();
        window.close();
    });
    ClickToolbar(8);
    EXPECT_EQ(about.Seen(), 1);
    EXPECT_FALSE(isShown);
}

TEST_F(TagPageUse, TheMemoryStaysOnThePageThatBecomesSmaller) {
    Window->resize(1600, 900);
    Settle();
    Press(3);
    Window->resize(Window->minimumSize());
    Settle();
    EXPECT_TRUE(Page().Picture2->rect().contains(Page().Picture4->geometry()));
}

TEST_F(TagPageUse, AFileThatLeftTheCollectionCanStillBeSavedAndShownAgain) {
    Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Window->NewConversion();
    Fields().infoTitle->setText(u"New"_s);
    Press(7);
    EXPECT_TRUE(Probe("a.mp3").contains("title=New"));
    Fields().infoTitle->setText(u"typed"_s);
    Press(5);
    EXPECT_EQ(Fields().infoTitle->text(), u"New"_s);
}

TEST_F(TagPageUse, AConversionLeavesTheChosenVersionInForce) {
    const QString path = Add("a.mp3");
    ClickNode(u"a.mp3"_s);
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    Window->StartRun();
    EXPECT_EQ(IconOf(1), u"converted"_s);
    EXPECT_TRUE(Fields().Option1[1]->isChecked());
    Fields().infoTitle->setText(u"After the run"_s);
    Press(7);
    EXPECT_TRUE(Probe("a.mp3").contains("title=After the run")) << "saved as version two";
    EXPECT_FALSE(ContentOf(Folder.Native("music/a.mp3")).right(128).startsWith("TAGAfter"));
}

TEST_F(TagPageUse, ALongCommentIsSavedAsItWasLoaded) {
    Add("a.flac");
    const QByteArray comment(40'000, 'c');
    Folder.MakeFile("comment.txt", "COMMENT=" + comment + "\n");
    RunTool(
        {"metaflac", "--import-tags-from=" + Folder.Native("comment.txt"), Folder.Native("music/a.flac")});
    ClickNode(u"a.flac"_s);
    Fields().infoTitle->setText(u"New"_s);
    Press(7);
    const QByteArray tags = RunTool({"metaflac", "--export-tags-to=-", Folder.Native("music/a.flac")}).Output;
    EXPECT_TRUE(tags.contains("COMMENT=" + comment));
    EXPECT_TRUE(tags.contains("TITLE=New"));
}

TEST_F(TagPageUse, ATrackOfAWmaMovesUpInTheFileToo) {
    Add("a.wma");
    for (const char* shown : {"1", "2", "3"}) {
        ClickNode(u"a.wma"_s);
        EXPECT_EQ(Fields().infoTrack->text().toStdString(), shown);
        Press(7);
        EXPECT_EQ(Fields().infoTrack->text().toStdString(), shown);
    }
}

// The block of such a file goes onto the page, from fields of a fixed size that are filled up with zeros.
TEST_F(TagPageUse, WhatIsTypedBehindTheTextsOfAnAacReachesTheOutputs) {
    const auto padded = [](const QByteArray& text, qsizetype size) { return text.leftJustified(size, '\0'); };
    const QByteArray block = "TAG" + padded("Title", 30) + padded("Artist", 30) + padded("Album", 30) +
                             padded("199", 4) + padded("Comment", 29) + "\x04\x11";
    Make("a.aac");
    Folder.MakeFile("music/a.aac", ContentOf(Folder.Native("music/a.aac")) + block);
    AddFolderByCommand(Folder.Path("music"));
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    ClickToolbar(5);
    EXPECT_EQ(IconOf(1), u"converted"_s);
    EXPECT_EQ(Fields().infoArtist->text(), u"Artist"_s);
    EXPECT_EQ(Fields().infoAlbum->text(), u"Album"_s);
    EXPECT_EQ(Fields().infoYear->text(), u"199"_s);
    EXPECT_EQ(Fields().infoComment->text(), u"Comment"_s);
    EXPECT_EQ(Fields().infoGenre->currentText(), u"17"_s);

    Window->NewConversion();
    Folder.MakeFile("more/b.wav", ContentOf(Folder.Native("in.wav")));
    AddFolderByCommand(Folder.Path("more"));
    QTest::keyClick(Fields().infoArtist, Qt::Key_End);
    QTest::keyClicks(Fields().infoArtist, u" and Others"_s);
    Panel().ComboOutFormat->SelectText(u"APE (MonKey's audio)"_s);
    ClickToolbar(5);
    const QByteArray written = ContentOf(Folder.Native("out/more/b.ape")).right(128);
    EXPECT_EQ(written.mid(33, 30), padded("Artist and Others", 30));
}

}  // namespace
}  // namespace Sonmira
