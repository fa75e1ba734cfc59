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

class TagPages : public MainWindowTest {
public:
    TagPages() {
        OverrideCurrentYear(2031);
        Open();
        Form().SSTab1->setCurrentIndex(1);
    }
    ~TagPages() override { OverrideCurrentYear(0); }

protected:
    QString Make(const QByteArray& name) {
        Folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 22050, 440), WavKind::Signed16));
        const ToolResult made =
            RunTool({"ffmpeg", "-v", "error", "-y", "-i", Folder.Native("in.wav"), Folder.Native(name)});
        EXPECT_EQ(made.ExitCode, 0) << made.Errors.constData();
        return Folder.Path(name);
    }
    TagPanelForm& Page() { return Form().TagPage; }
    TagFields& Fields() { return *Page().Fields; }
    TagPanel& Panel() { return Window->Tags(); }
    void Press(int button) { Page().ToolbarButton(button)->trigger(); }

    // The text fields by their names, in the order of the memory, which has the genre's list at place 3.
    std::array<QLineEdit*, TagFieldCount> TextFields() {
        const TagFields& fields = Fields();
        return {fields.infoTitle,         fields.infoArtist,    fields.infoAlbum, nullptr,
                fields.infoGenreS,        fields.infoCopyright, fields.infoYear,  fields.infoTrack,
                fields.infoComment,       fields.infoComposer,  fields.infoURL,   fields.infoEncodedBy,
                fields.infoOriginalArtist};
    }
    QStringList Shown() {
        QStringList texts;
        for (const QLineEdit* field : TextFields()) {
            texts.append(field == nullptr ? Fields().infoGenre->currentText() : field->text());
        }
        return texts;
    }
    void Type(const QStringList& texts) {
        Fields().infoGenre->SelectText(texts[3]);
        qsizetype n = 0;
        for (QLineEdit* field : TextFields()) {
            if (field != nullptr) field->setText(texts[n]);
            ++n;
        }
    }

    // A text of its own for every field.
    const QStringList Texts = {u"The title"_s,   u"The artist"_s,    u"The album"_s,   u"Jazz"_s,
                               u"Sea Shanty"_s,  u"The copyright"_s, u"1999"_s,        u"7"_s,
                               u"The comment"_s, u"The composer"_s,  u"http://url/"_s, u"The encoder"_s,
                               u"The original"_s};
};

TEST_F(TagPages, AreOpenedWithVersionTwo) {
    EXPECT_TRUE(Fields().Option1[1]->isChecked());
    EXPECT_TRUE(Fields().infoComposer->isEnabled());
    Fields().Option1[0]->click();
    for (const QLineEdit* field : {Fields().infoGenreS, Fields().infoCopyright, Fields().infoComposer,
                                   Fields().infoURL, Fields().infoEncodedBy, Fields().infoOriginalArtist}) {
        EXPECT_FALSE(field->isEnabled());
    }
    EXPECT_TRUE(Fields().infoTitle->isEnabled());
    Form().SSTab1->setCurrentIndex(0);
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_TRUE(Fields().Option1[1]->isChecked()) << "also where the user had chosen the other";
    for (const QWidget* field : Fields().InOrder()) EXPECT_TRUE(field->isEnabled());
}

TEST_F(TagPages, OfferTheGenresByTheirNumbersAndNoneAtFirst) {
    EXPECT_EQ(Fields().infoGenre->count(), 148);
    EXPECT_EQ(Fields().infoGenre->itemText(17), AudioInformation::GenreName(17));
    EXPECT_EQ(Fields().infoGenre->currentText(), QString());
}

TEST_F(TagPages, SaveWhatIsTyped) {
    const QString path = Make("a.mp3");
    Panel().LoadTagPanel(path);
    EXPECT_TRUE(Page().Command3->isEnabled());
    Fields().infoTitle->setText(u"New title"_s);
    Fields().infoGenre->SelectText(u"Jazz"_s);
    EXPECT_EQ(Fields().infoGenreS->text(), u"Jazz"_s);
    QTest::mouseClick(Page().Command3, Qt::LeftButton);
    EXPECT_FALSE(Page().Command3->isEnabled());
    EXPECT_EQ(Fields().infoYear->text(), u"2031"_s) << "a year of 0 becomes the current one";
    EXPECT_EQ(Fields().infoTrack->text(), u"1"_s);
    const QByteArray seen =
        RunTool({"ffprobe", "-v", "error", "-show_entries", "format_tags", Folder.Native("a.mp3")}).Output;
    EXPECT_TRUE(seen.contains("title=New title")) << seen.constData();
    EXPECT_TRUE(seen.contains("genre=Jazz")) << seen.constData();
    EXPECT_TRUE(seen.contains("date=2031")) << seen.constData();
}

TEST_F(TagPages, ANumberThatIsNoneSavesNothing) {
    const QString path = Make("a.mp3");
    Panel().LoadTagPanel(path);
    const QByteArray before = ContentOf(Folder.Native("a.mp3"));
    for (const QString& track : {u"one"_s, u"40000"_s}) {
        Fields().infoTrack->setText(track);
        QTest::mouseClick(Page().Command3, Qt::LeftButton);
        EXPECT_TRUE(Page().Command3->isEnabled());
    }
    EXPECT_EQ(ContentOf(Folder.Native("a.mp3")), before);
}

TEST_F(TagPages, MoveTheTrackOfAWmaUpByOneWithEachLoadAndSave) {
    const QString path = Make("a.wma");
    Panel().LoadTagPanel(path);
    EXPECT_EQ(Fields().infoTrack->text(), u"1"_s);
    Press(7);
    EXPECT_EQ(Fields().infoTrack->text(), u"1"_s);
    Panel().LoadTagPanel(path);
    EXPECT_EQ(Fields().infoTrack->text(), u"2"_s);
}

TEST_F(TagPages, CopyAndPasteATag) {
    Fields().infoTitle->setText(u"One"_s);
    Fields().infoGenre->SelectText(u"Jazz"_s);
    EXPECT_EQ(Page().Picture4->Label25[0]->text(), u"empty"_s);
    Press(1);
    EXPECT_FALSE(Page().Picture4->isVisible());
    EXPECT_EQ(Page().Picture4->Label25[0]->text(), u"One"_s);
    EXPECT_EQ(Page().Picture4->Label25[1]->text(), QString());
    EXPECT_EQ(Page().Picture4->Label25[3]->text(), u"Jazz"_s);
    Fields().infoTitle->setText(u"Two"_s);
    Fields().infoGenre->SelectText(u"Rock"_s);
    Press(2);
    EXPECT_EQ(Fields().infoTitle->text(), u"One"_s);
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Jazz"_s);
    Window->NewConversion();
    Press(2);
    EXPECT_EQ(Fields().infoTitle->text(), u"One"_s) << "the memory survives a new conversion";
}

TEST_F(TagPages, PasteLeavesTheGenreWhereTheMemoryHasNone) {
    Press(1);
    Fields().infoGenre->SelectText(u"Rock"_s);
    Press(2);
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Rock"_s);
}

TEST_F(TagPages, TheMemoryIsShownAndHidden) {
    Press(3);
    EXPECT_TRUE(Page().Picture4->isVisible());
    Press(3);
    EXPECT_FALSE(Page().Picture4->isVisible());
    Press(3);
    QTest::mouseClick(Page().Picture4->Label25[4], Qt::LeftButton);
    EXPECT_FALSE(Page().Picture4->isVisible()) << "a click anywhere on it hides it";
    Press(3);
    ClickToolbar(1);
    EXPECT_FALSE(Page().Picture4->isVisible());
}

TEST_F(TagPages, CancelDropsWhatWasTyped) {
    Press(5);
    EXPECT_EQ(Fields().infoYear->text(), QString()) << "no file is shown yet";
    Panel().LoadTagPanel(Make("a.ogg"));
    Fields().infoTitle->setText(u"typed"_s);
    Press(5);
    EXPECT_NE(Fields().infoTitle->text(), u"typed"_s);
}

TEST_F(TagPages, AFailedLoadEmptiesTheFieldsButTheGenre) {
    Panel().LoadTagPanel(Make("a.mp3"));
    Fields().infoGenre->SelectText(u"Jazz"_s);
    Fields().infoTitle->setText(u"typed"_s);
    Panel().LoadTagPanel(Folder.Path());
    EXPECT_EQ(Fields().infoTitle->text(), QString());
    EXPECT_EQ(Fields().infoYear->text(), QString());
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Jazz"_s);
    EXPECT_FALSE(Page().Command3->isEnabled());
    EXPECT_EQ(Panel().CurrentFile(), Folder.Path());
}

TEST_F(TagPages, TheOtherVersionIsShownAtOnce) {
    const QString path = Make("a.mp3");
    Panel().LoadTagPanel(path);
    Fields().infoTitle->setText(u"Two"_s);
    Press(7);
    Fields().Option1[0]->click();
    EXPECT_EQ(Fields().infoTitle->text(), QString());
    Fields().Option1[1]->click();
    EXPECT_EQ(Fields().infoTitle->text(), u"Two"_s);
}

TEST_F(TagPages, ShowEveryFieldOfAFile) {
    const QString path = Make("a.mp3");
    AudioInformation file;
    file.SetTagKind(2);
    file.Title = Texts[0];
    file.Artist = Texts[1];
    file.Album = Texts[2];
    file.GenreString = Texts[4];
    file.Copyright = Texts[5];
    file.Year = 1999;
    file.Track = 7;
    file.Comment = Texts[8];
    file.Composer = Texts[9];
    file.URL = Texts[10];
    file.EncodedBy = Texts[11];
    file.OriginalArtist = Texts[12];
    file.SaveTag(path);
    Panel().LoadTagPanel(path);
    QStringList expected = Texts;
    expected[3] = AudioInformation::GenreName(12);  // which a free text is
    EXPECT_EQ(Shown(), expected);
}

TEST_F(TagPages, SaveEveryField) {
    const QString path = Make("a.mp3");
    Panel().LoadTagPanel(path);
    Type(Texts);
    Press(7);
    AudioInformation file;
    file.SetTagKind(2);
    file.LoadTag(path);
    EXPECT_EQ((QStringList{file.Title, file.Artist, file.Album, Texts[3], file.GenreString, file.Copyright,
                           QString::number(file.Year), QString::number(file.Track), file.Comment,
                           file.Composer, file.URL, file.EncodedBy, file.OriginalArtist}),
              Texts);
    // Without a text the genre of the list is what a file gets.
    Fields().infoGenreS->clear();
    Press(7);
    file.LoadTag(path);
    EXPECT_EQ(file.Genre, 8);
}

TEST_F(TagPages, CopyAndPasteEveryField) {
    for (const QLabel* label : Page().Picture4->Label25) EXPECT_EQ(label->text(), u"empty"_s);
    Type(Texts);
    Press(1);
    QStringList remembered;
    for (const QLabel* label : Page().Picture4->Label25) remembered.append(label->text());
    EXPECT_EQ(remembered, Texts);
    QStringList others;
    for (int n = 0; n < int{TagFieldCount}; ++n) others.append(QString::number(100 + n));
    others[3] = u"Rock"_s;
    Type(others);
    ASSERT_EQ(Shown(), others);
    Press(2);
    EXPECT_EQ(Shown(), Texts);
}

TEST_F(TagPages, AFailedLoadEmptiesEveryTextField) {
    Type(Texts);
    Panel().LoadTagPanel(Folder.Path());
    for (const QLineEdit* field : TextFields()) {
        if (field == nullptr) continue;
        EXPECT_EQ(field->text(), QString()) << field->objectName().toStdString();
    }
    EXPECT_EQ(Fields().infoGenre->currentText(), u"Jazz"_s);
}

TEST(TagMemories, NameTheirThirteenTextsWhereNoLanguageDoes) {
    const TagMemory memory(nullptr);
    QStringList captions;
    for (const QLabel* label : memory.Label24) captions.append(label->text());
    EXPECT_EQ(captions,
              (QStringList{u"Title :"_s, u"Artist :"_s, u"Album :"_s, u"Genre :"_s, u"Genre Str :"_s,
                           u"Copyright :"_s, u"Year :"_s, u"Track :"_s, u"Comment :"_s, u"Composer :"_s,
                           u"Url :"_s, u"Encoded by :"_s, u"Original Artist :"_s}));
    EXPECT_EQ(memory.Label23->text(), u"Tag in memory :"_s);
}

class TagPageAtTheStart : public MainWindowTest {};

TEST_F(TagPageAtTheStart, HoldsVersionOneWithSixFieldsOff) {
    Open();
    const TagFields& fields = *Form().TagPage.Fields;
    const QList<const QWidget*> off = {fields.infoGenreS, fields.infoCopyright, fields.infoComposer,
                                       fields.infoURL,    fields.infoEncodedBy, fields.infoOriginalArtist};
    for (const QWidget* field : fields.InOrder()) {
        EXPECT_EQ(field->isEnabled(), !off.contains(field)) << field->objectName().toStdString();
    }
    EXPECT_TRUE(fields.Option1[0]->isChecked());
    EXPECT_FALSE(Form().TagPage.Command3->isEnabled());
}

}  // namespace
}  // namespace Sonmira
