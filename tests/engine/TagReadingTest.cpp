#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "engine/SelectionDriver.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "platform/Clock.h"
#include "platform/Values.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// An ID3v1 block of these fields, padded with zeros.
QByteArray Id3Block(const QByteArray& title, const QByteArray& artist, const QByteArray& year, char track,
                    char genre) {
    const auto field = [](const QByteArray& text, qsizetype size) { return text.leftJustified(size, '\0'); };
    return "TAG" + field(title, 30) + field(artist, 30) + field("Album", 30) + field(year, 4) +
           field("Comment", 29) + QByteArray(1, track) + QByteArray(1, genre);
}

// Which readers of tags a file is given to, and what of that ends in the record.
class TagSource : public ::testing::Test {
protected:
    TagSource() {
        NumberLanguageLines();
        Host.Format = u"None"_s;  // writing a tag completes the record
        Host.OutputFolder = Folder.MakeFolder("out");
    }
    const TagRecord& Read(const QByteArray& name, const QByteArray& content = "x") {
        Items = {};
        Codecs.TagReads.clear();
        AddFileRecord(Items, Host, Folder.MakeFile(name, content));
        JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
        return Run.Tag();
    }
    const TagRecord& ReadAlone(const QByteArray& name) {
        Items = {};
        AddFileRecord(Items, Host, Folder.MakeFile(name));
        SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path(name));
        return Run.Tag();
    }
    // All readers that an untagged file of that ending meets, in order.
    QStringList ReadersOf(const QByteArray& ending) {
        Read("song." + ending);
        return Codecs.TagReads;
    }

    const QStringList BothKinds = {u"AudioInformation 1"_s, u"AudioInformation 2"_s};
    const QStringList Block = {u"GetID3Tag"_s};

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(TagSource, OfWavAndAviIsNothing) {
    for (const char* ending : {"wav", "avi", "AVI"}) EXPECT_EQ(ReadersOf(ending), QStringList()) << ending;
    EXPECT_EQ(Run.Tag().Track, 1);
    EXPECT_EQ(Run.Tag().GenreIndex, 0);
    EXPECT_NE(Run.Tag().Year, QString());
}

TEST_F(TagSource, OfStreamsIsTheTagObjectFirstInOneKindThenInTheOther) {
    for (const char* ending : {"mp3", "ogg", "wma", "m4a", "oga", "xyz"}) {
        EXPECT_EQ(ReadersOf(ending), BothKinds) << ending;
    }
}

TEST_F(TagSource, OfAStreamWithATitleIsTheFirstKindAlone) {
    EXPECT_EQ(Read("song.mp3", "sound" + Id3Block("Title", "", "1999", 7, 17)).Title, u"Title"_s);
    EXPECT_EQ(Codecs.TagReads, QStringList{u"AudioInformation 1"_s});
}

TEST_F(TagSource, OfTheOwnDecodersIsTheBlockAtTheEnd) {
    for (const char* ending : {"aac", "alac", "flac", "ape", "apl"}) {
        EXPECT_EQ(ReadersOf(ending), Block) << ending;
    }
}

TEST_F(TagSource, OfMusepackIsTheTagObjectAndThenTheBlock) {
    for (const char* ending : {"mpc", "mp+"}) EXPECT_EQ(ReadersOf(ending), BothKinds + Block) << ending;
}

TEST_F(TagSource, OfMusepackIsInTheEndTheBlockInAllFields) {
    const TagRecord& tag = Read("song.mpc", "sound" + Id3Block("Title", "Artist", "1999", 7, 17));
    EXPECT_EQ(tag.Artist.size(), 30) << "with its padding, which the tag object does not give";
    EXPECT_EQ(tag.GenreText, u"17"_s);
    EXPECT_EQ(tag.Track, 7);
}

TEST_F(TagSource, OfAnUntaggedApeOrMusepackIsAYearThatTellsWhoConvertedIt) {
    EXPECT_EQ(Read("song.ape").Year, u"2010"_s);
    EXPECT_EQ(Read("song.mpc").Year, u"2009"_s);
    EXPECT_EQ(ReadAlone("alone.ape").Year, u"2008"_s);
    EXPECT_EQ(ReadAlone("alone.mp+").Year, u"2008"_s);
    EXPECT_EQ(Run.Tag().Track, 0);
    EXPECT_EQ(Run.Tag().GenreIndex, 9);
}

TEST_F(TagSource, OfAFlacWithoutABlockIsFieldsOfZeros) {
    const TagRecord& tag = Read("song.flac");
    EXPECT_EQ(tag.Title, QString(30, QChar(0)));
    EXPECT_EQ(tag.Track, 0);
    EXPECT_EQ(tag.GenreText, u"Blues"_s);
}

TEST_F(TagSource, OfAFlacBehindAnAacWithATitleIsItsComments) {
    AddFileRecord(Items, Host, Folder.MakeFile("a.aac", "sound" + Id3Block("Held", "Artist", "1999", 7, 17)));
    AddFileRecord(Items, Host, Folder.MakeFile("b.flac"));
    JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    EXPECT_EQ(Codecs.TagReads, Block) << "the FLAC's block is not read";
    EXPECT_EQ(Run.Tag().Title, QString());
    EXPECT_EQ(Run.Tag().Track, 1);
    EXPECT_EQ(Run.Tag().GenreIndex, 9);
}

TEST_F(TagSource, OfAnAacGoesOntoThePageAndOnlyItsGenreIntoTheRecord) {
    const TagRecord& tag = Read("song.aac", "sound" + Id3Block("Title", "Artist", "1999", 7, 17));
    EXPECT_EQ(tag.Title, QString());
    EXPECT_EQ(tag.Artist, QString());
    EXPECT_EQ(tag.Track, 1);
    EXPECT_EQ(tag.GenreText, u"Rock"_s);
    EXPECT_TRUE(Host.Panel.Artist.startsWith(u"Artist"_s));
    EXPECT_EQ(Host.Panel.Year, u"1999"_s);
    EXPECT_EQ(Host.Panel.Genre, u"17"_s);
}

TEST_F(TagSource, OfAnAacOrAlacWithoutABlockIsNothingAndThePageStays) {
    const auto check = [this](const QByteArray& name) {
        Host.Panel = {u"Artist"_s, u"Album"_s, u"1987"_s, u"Comment"_s, u"3"_s};
        const TagRecord& tag = Read(name);
        EXPECT_EQ(Codecs.TagReads, Block) << name.constData();
        const QString texts = tag.Title + tag.Artist + tag.Album + tag.Comment + tag.GenreText;
        EXPECT_EQ(texts, QString()) << name.constData();
        EXPECT_EQ(tag.Year, PlainNumber(CurrentYear()));
        EXPECT_EQ(tag.GenreIndex, 0);
        EXPECT_EQ(tag.Track, 1);
        const PanelTag& panel = Host.Panel;
        EXPECT_EQ((QStringList{panel.Artist, panel.Album, panel.Year, panel.Comment, panel.Genre}),
                  (QStringList{u"Artist"_s, u"Album"_s, u"1987"_s, u"Comment"_s, u"3"_s}));
    };
    check("a.aac");
    check("b.alac");
    Codecs.IsAlac = true;
    check("c.alac");
}

TEST_F(TagSource, OfAFlacBehindAnAacWithATitleOfBlanksIsItsBlock) {
    const QByteArray blanks(30, ' ');
    AddFileRecord(Items, Host, Folder.MakeFile("a.aac", "sound" + Id3Block(blanks, "Artist", "1999", 7, 17)));
    AddFileRecord(Items, Host, Folder.MakeFile("b.flac"));
    JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    EXPECT_EQ(Codecs.TagReads, Block + Block);
    EXPECT_EQ(Run.Tag().GenreIndex, 0);
}

TEST_F(TagSource, OfAnAacHoldsItsTitleThroughTheRunAndNotBeyond) {
    AddFileRecord(Items, Host, Folder.MakeFile("a.aac", "sound" + Id3Block("Held", "Artist", "1999", 7, 17)));
    AddFileRecord(Items, Host, Folder.MakeFile("b.aac"));  // without a block, which changes nothing
    AddFileRecord(Items, Host, Folder.MakeFile("c.flac"));
    JobDriver driver(Run, Host, Codecs.Parts(), Items);
    driver.RunAllConversions();
    EXPECT_EQ(Codecs.TagReads, Block + Block) << "of the first two";
    Items = {};
    Codecs.TagReads.clear();
    AddFileRecord(Items, Host, Folder.MakeFile("d.flac"));
    driver.RunAllConversions();
    EXPECT_EQ(Codecs.TagReads, Block);
}

TEST_F(TagSource, OfASelectionHoldsNoTitleFromOneFileToTheNext) {
    Folder.MakeFile("Music/a.aac", "sound" + Id3Block("Held", "Artist", "1999", 7, 17));
    Folder.MakeFile("Music/b.flac");
    AddDirectory(Items, Host, Folder.Path("Music"));
    SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path("Music"));
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[1].Name, u"b.flac"_s);
    EXPECT_EQ(Codecs.TagReads, Block + Block);
    EXPECT_EQ(Run.Tag().GenreIndex, 0);
}

TEST_F(TagSource, OfABlockIsACommentOfTwentyNineLetters) {
    const QByteArray comment = "abcdefghijklmnopqrstuvwxyz012";
    QByteArray block = Id3Block("Title", "Artist", "1999", 7, 17);
    block.replace(97, 29, comment);
    for (const char* name : {"a.ape", "b.mpc", "c.flac"}) {
        EXPECT_EQ(Read(name, "sound" + block).Comment, QString::fromLatin1(comment)) << name;
        EXPECT_EQ(Run.Tag().Track, 7);
    }
    Read("d.aac", "sound" + block);
    EXPECT_EQ(Host.Panel.Comment, QString::fromLatin1(comment));
}

TEST_F(TagSource, OfAStreamWithoutATextForItsGenreIsTheNameOfTheNumber) {
    EXPECT_EQ(Read("song.mp3").GenreText, AudioInformation::GenreName(12));
    EXPECT_EQ(Run.Tag().GenreIndex, 12);
}

}  // namespace
}  // namespace Sonmira
