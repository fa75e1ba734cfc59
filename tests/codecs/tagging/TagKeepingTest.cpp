// What a save does not name stays as it is, format by format, where the tag library alone would lose it.
#include "TagKeepingTest.h"

#include "codecs/ApeFunctions.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/SafeRewrite.h"

#include <fstream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST_F(TagKeeping, ATitleThatOnlyTheOldBlockOfAnApeSaysIsShownAndKeptInStep) {
    for (const char* name : {"a.ape", "a.mpc"}) {
        const QString path = Make(name);
        Append(name, ApeTag("REPLAYGAIN_TRACK_GAIN", "-6.5 dB") + Id3v1("Only here", "Old artist", 17));
        AudioInformation tag = Load(path);
        EXPECT_EQ(tag.Title, u"Only here"_s) << name;
        EXPECT_EQ(tag.Genre, 17) << name;
        Edit(path, [](AudioInformation& it) { it.Title = u"New"_s; });
        const QByteArray after = Content(name);
        EXPECT_TRUE(after.contains("REPLAYGAIN_TRACK_GAIN")) << name;
        EXPECT_TRUE(after.right(128).startsWith(QByteArray("TAGNew\0", 7))) << name;
        EXPECT_TRUE(after.right(128).contains("Old artist")) << name;
        tag = Load(path);
        EXPECT_EQ(tag.Title, u"New"_s) << name;
        EXPECT_EQ(tag.Artist, u"Old artist"_s) << name;
    }
}

TEST_F(TagKeeping, AnApeWithoutAnOldBlockGetsNone) {
    const QString path = Make("a.ape");
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_FALSE(Content("a.ape").right(128).startsWith("TAG"));
}

TEST_F(TagKeeping, SortNamesInAnOlderId3v2Survive) {
    const QString path =
        MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)) + Frame("TSOP", QByteArray("\0Artist, The", 12)));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_TRUE(Content("old.mp3").contains("TSOP"));
    EXPECT_TRUE(Content("old.mp3").contains("Artist, The"));
    EXPECT_TRUE(Probe("old.mp3").contains("tag:title=new"));
}

TEST_F(TagKeeping, AnOlderId3v2StaysOneWhereItHoldsAll) {
    const QString path = MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_TRUE(Content("old.mp3").startsWith("ID3\3"));
}

TEST_F(TagKeeping, FramesThatOnlyTheOlderId3v2KnowsSurvive) {
    const QByteArray volume("\3\x10\x12\x34\x56\x78", 6);
    const QString path = MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)) + Frame("RVAD", volume) +
                                    Frame("TSIZ", QByteArray("\0"
                                                             "1234567",
                                                             8)));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    const QByteArray after = Content("old.mp3");
    EXPECT_TRUE(after.contains("RVAD") && after.contains(volume));
    EXPECT_TRUE(after.contains("TSIZ") && after.contains("1234567"));
}

TEST_F(TagKeeping, ADayAndATimeWithoutAYearSurvive) {
    const QByteArray latin(1, '\0');
    const QString path = MakeOldTag(Frame("TIT2", latin + "Old") + Frame("TDAT", latin + "2106") +
                                    Frame("TIME", latin + "1430"));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    QByteArray after = Content("old.mp3");
    EXPECT_TRUE(after.contains("TDAT") && after.contains("2106"));
    EXPECT_TRUE(after.contains("TIME") && after.contains("1430"));
    Edit(path, [](AudioInformation& tag) { tag.Year = 2004; });
    after = Content("old.mp3");
    EXPECT_TRUE(after.contains("2106") && after.contains("1430") && after.contains("2004"));
    EXPECT_EQ(Load(path).Year, 2004);
}

TEST_F(TagKeeping, AChainedOggKeepsItsSecondStreamAndThatsTag) {
    Make("first.ogg", {"-metadata", "title=First"});
    Make("second.ogg", {"-metadata", "title=Second"});
    const QString path = Folder.MakeFile("chain.ogg", Content("first.ogg") + Content("second.ogg"));
    Edit(path, [](AudioInformation& tag) {
        tag.Title = u"Changed"_s;
        tag.Comment = QString(100'000, u'x');  // many more pages
    });
    EXPECT_EQ(Load(path).Title, u"Changed"_s);
    EXPECT_TRUE(Content("chain.ogg").endsWith(Content("second.ogg")));
    const ToolResult info = RunTool({"ogginfo", Folder.Native("chain.ogg")});
    EXPECT_EQ(info.ExitCode, 0) << info.Output.constData();
    EXPECT_FALSE(info.Output.contains("WARNING")) << info.Output.constData();
}

TEST_F(TagKeeping, CommentsOfSeveralLanguagesStayApart) {
    const QString path = MakeOldTag(Frame("COMM", QByteArray("\0eng\0First", 10)) +
                                    Frame("COMM", QByteArray("\0deu\0Zweiter", 12)));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    QByteArray after = Content("old.mp3");
    EXPECT_TRUE(after.contains(QByteArray("eng\0First", 9)));
    EXPECT_TRUE(after.contains(QByteArray("deu\0Zweiter", 11)));
    Edit(path, [](AudioInformation& tag) { tag.Comment = u"Changed"_s; });
    after = Content("old.mp3");
    EXPECT_TRUE(after.contains(QByteArray("eng\0Changed", 11)));
    EXPECT_TRUE(after.contains(QByteArray("deu\0Zweiter", 11)));
}

TEST_F(TagKeeping, FurtherTextsOfAFieldStayBehindItsNewFirst) {
    const QString path = Make("a.flac");
    RunTool({"metaflac", "--set-tag=ARTIST=One", "--set-tag=ARTIST=Two", Folder.Native("a.flac")});
    Edit(path, [](AudioInformation& tag) { tag.Artist = u"Other"_s; });
    const QByteArray tags = RunTool({"metaflac", "--export-tags-to=-", Folder.Native("a.flac")}).Output;
    EXPECT_TRUE(tags.contains("ARTIST=Other\nARTIST=Two")) << tags.constData();
    Edit(path, [](AudioInformation& tag) { tag.Artist.clear(); });
    EXPECT_FALSE(
        RunTool({"metaflac", "--export-tags-to=-", Folder.Native("a.flac")}).Output.contains("ARTIST"))
        << "a field that the user empties is empty";
}

TEST_F(TagKeeping, AGenreOfTheTableKeepsItsSpelling) {
    for (const qint16 kind : {1, 2}) {
        const QString path = Make("a.flac");
        RunTool({"metaflac", "--set-tag=GENRE=rock", Folder.Native("a.flac")});
        Edit(
            path, [](AudioInformation& tag) { tag.Title = u"New"_s; }, kind);
        EXPECT_TRUE(RunTool({"metaflac", "--export-tags-to=-", Folder.Native("a.flac")})
                        .Output.contains("GENRE=rock\n"))
            << kind;
    }
}

TEST_F(TagKeeping, AGenreNumberBeyondTheTableStays) {
    Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0"});
    const QString path =
        Folder.MakeFile("a.mp3", Content("plain.mp3") + Id3v1("Title", {}, static_cast<char>(191)));
    Edit(
        path, [](AudioInformation& tag) { tag.Title = u"New"_s; }, 1);
    const QByteArray block = Content("a.mp3").right(128);
    EXPECT_TRUE(block.startsWith("TAGNew"));
    EXPECT_EQ(static_cast<unsigned char>(block[127]), 191);
}

TEST_F(TagKeeping, AnOldTrackOfAWmaIsReadAsItCounts) {
    const QString path = Make("a.wma", {"-metadata", "WM/Track=4"});
    ASSERT_TRUE(Probe("a.wma").contains("wm/track=4") || Probe("a.wma").contains("track"))
        << Probe("a.wma").constData();
    EXPECT_EQ(Load(path).Track, 4);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_EQ(Load(path).Track, 4);
}

TEST_F(TagKeeping, FurtherAttributesOfAWmaStay) {
    const QString path = Make("a.wma", {"-metadata", "WM/Mood=calm", "-metadata", "genre=Jazz"});
    Edit(path, [](AudioInformation& tag) {
        tag.Title = u"New"_s;
        tag.GenreString = u"Blues"_s;
    });
    const QByteArray seen = Probe("a.wma");
    EXPECT_TRUE(seen.contains("calm") && seen.contains("blues") && !seen.contains("jazz"))
        << seen.constData();
}

// An item of the list whose content is no text.
// A frame with marks in its head.
TEST_F(TagKeeping, AFrameThatOthersAreToDropIsKeptAndAnEncryptedOneLeavesTheFileAlone) {
    const QByteArray title = Frame("TIT2", QByteArray("\0Old", 4));
    QByteArray marked = Frame("TXXX", QByteArray("\0name\0value", 11));
    marked[8] = static_cast<char>(0x80);
    QString path = MakeOldTag(title + marked);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_TRUE(Content("old.mp3").contains(QByteArray("name\0value", 10)));
    QByteArray encrypted = Frame("PRIV", "secret");
    encrypted[9] = 0x40;
    path = MakeOldTag(title + encrypted);
    const QByteArray before = Content("old.mp3");
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("old.mp3"), before);
}

TEST_F(TagKeeping, AnEmptyFrameWithOthersBehindItLeavesTheFileAlone) {
    const QString path = MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)) + Frame("TCOM", {}) +
                                    Frame("APIC", QByteArray("\0image/png\0\3\0picture", 21)));
    const QByteArray before = Content("old.mp3");
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("old.mp3"), before);
}

TEST_F(TagKeeping, ASecondTagBehindTheFirstLeavesTheFileAlone) {
    const QByteArray picture = Frame("APIC", QByteArray("\0image/png\0\3\0picture", 21));
    MakeOldTag(picture);
    const QByteArray second = Content("old.mp3");
    const QByteArray frames = Frame("TIT2", QByteArray("\0Old", 4));
    const QString path = Folder.MakeFile(
        "two.mp3", QByteArray("ID3\3\0\0\0\0\0", 9) + static_cast<char>(frames.size()) + frames + second);
    const QByteArray before = Content("two.mp3");
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("two.mp3"), before);
}

TEST_F(TagKeeping, TheFirstVersionOfId3v2IsSavedUnlessItHoldsWhatHasNoName) {
    const auto frame = [](const QByteArray& id, const QByteArray& content) {
        return id + BigEndian(static_cast<quint32>(content.size())).sliced(1) + content;
    };
    const auto make = [&](const QByteArray& frames) {
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
        return Folder.MakeFile("first.mp3", QByteArray("ID3\2\0\0\0\0\0", 9) +
                                                static_cast<char>(frames.size()) + frames +
                                                Content("plain.mp3"));
    };
    const QByteArray title = frame("TT2", QByteArray("\0Old", 4));
    const QByteArray volume("\3\x10\x12\x34\x56\x78", 6);
    QString path = make(title + frame("TP1", QByteArray("\0Artist", 7)) + frame("RVA", volume));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_EQ(Load(path).Artist, u"Artist"_s);
    EXPECT_TRUE(Content("first.mp3").contains(volume));
    EXPECT_TRUE(Probe("first.mp3").contains("title=new"));
    path = make(title + frame("CRM", "encrypted"));
    const QByteArray before = Content("first.mp3");
    EXPECT_THROW(Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; }), Failure);
    EXPECT_EQ(Content("first.mp3"), before);
}

TEST_F(TagKeeping, AYearThatIsNoneSurvivesInAnOlderId3v2) {
    for (const char* year : {"99", "c.1999"}) {
        const QString path =
            MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)) + Frame("TYER", QByteArray(1, '\0') + year));
        Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
        EXPECT_TRUE(Content("old.mp3").contains(year)) << year;
    }
}

// Writers of the newest version are many that know the frames of the one before only.
TEST_F(TagKeeping, AYearOfTheOlderId3v2IsReadAndKeptInTheNewest) {
    const QByteArray year = Frame("TYER", QByteArray("\0001999", 5));
    QByteArray mp3 = ContentOf(ToNative(MakeOldTag(Frame("TIT2", QByteArray("\0Old", 4)) + year)));
    mp3[3] = 4;
    const QString path = Folder.MakeFile("newest.mp3", mp3);
    EXPECT_EQ(Load(path).Year, 1999);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_EQ(Load(path).Year, 1999);
    EXPECT_TRUE(Content("newest.mp3").contains(year));
    Edit(path, [](AudioInformation& tag) { tag.Year = 2004; });
    EXPECT_EQ(Load(path).Year, 2004);
    EXPECT_FALSE(Content("newest.mp3").contains("1999"));
    EXPECT_TRUE(Probe("newest.mp3").contains("=2004")) << Probe("newest.mp3").constData();
}

TEST_F(TagKeeping, ACommentThatIsNoUtf8IsNotLostFromAFlac) {
    const QString path = Make("a.flac");
    RunTool({"metaflac", "--set-tag=PERFORMER=J!rgen", Folder.Native("a.flac")});
    QByteArray flac = Content("a.flac");
    flac.replace("J!rgen", "J\xFCrgen");
    Folder.MakeFile("a.flac", flac);
    try {
        Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    } catch (const Failure&) {
        EXPECT_EQ(Content("a.flac"), flac);
    }
    EXPECT_TRUE(Content("a.flac").contains("PERFORMER=J\xFCrgen"));
}

TEST_F(TagKeeping, TheBlocksOfAFlacAreKeptInStep) {
    const QString path = Make("a.flac");
    TagFileSimple(path, u"Artist"_s, u"Album"_s, u"Old"_s, {}, u"Rock"_s, u"1999"_s, u"3"_s, 1, 1);
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    std::array<char, 128> block{};
    GetID3Tag(path, block);
    EXPECT_EQ(QByteArray(block.data() + 3, 4), QByteArray("New\0", 4));
    EXPECT_EQ(QByteArray(block.data() + 33, 6), "Artist");
    EXPECT_EQ(block[126], 3);
    EXPECT_EQ(RunTool({"flac", "-s", "-t", Folder.Native("a.flac")}).ExitCode, 0);
    Append("a.flac", Id3v1("Old", "Artist", 17));
    Edit(path, [](AudioInformation& tag) { tag.Title = u"Newer"_s; });
    EXPECT_TRUE(Content("a.flac").right(128).startsWith("TAGNewer"));
    EXPECT_TRUE(Content("a.flac").right(128).contains("Artist"));
}

TEST_F(TagKeeping, LettersThatId3v1DoesNotHaveBecomeQuestionMarksOrNothing) {
    const QString path = Make("a.mp3");
    Edit(
        path,
        [](AudioInformation& tag) {
            tag.Title = u"Don\u2019t Stop, Łódź"_s;
            tag.Artist = u"Jo\u0308rg"_s;  // a letter and its dots apart
            tag.Album = u"Дождь"_s;
        },
        1);
    const AudioInformation tag = Load(path, 1);
    EXPECT_EQ(tag.Title, u"Don't Stop, ?ód?"_s);
    EXPECT_EQ(tag.Artist, u"J\u00F6rg"_s);
    EXPECT_EQ(tag.Album, QString()) << "nothing that could be read";
}

TEST_F(TagKeeping, AFileThatAnotherProgramReplacesMeanwhileIsLeftToIt) {
    Folder.MakeFile("theirs.bin", "new");
    Folder.MakeFile("a.bin", "old");
    const QByteArray file = Folder.Native("a.bin");
    const auto change = [&](const QByteArray& copy) {
        std::ofstream(copy.toStdString()) << "ours";
        std::filesystem::rename(Folder.Native("theirs.bin").toStdString(), file.toStdString());
    };
    EXPECT_THROW(RewriteThroughCopy(file, change), Failure);
    EXPECT_EQ(Content("a.bin"), "new");
}

TEST_F(TagKeeping, AFileThatAnotherProgramChangesMeanwhileIsLeftToIt) {
    const QString path = Folder.MakeFile("a.bin", "old");
    const QByteArray file = Folder.Native("a.bin");
    const auto change = [&](const QByteArray& copy) {
        std::ofstream(copy.toStdString()) << "ours";
        std::ofstream(file.toStdString()) << "theirs";
    };
    EXPECT_THROW(RewriteThroughCopy(file, change), Failure);
    EXPECT_EQ(Content("a.bin"), "theirs");
}

TEST_F(TagKeeping, AFileOfTwoNamesChangesUnderTheOneThatWasSaved) {
    const QString path = Make("a.flac");
    ASSERT_EQ(link(Folder.Native("a.flac").constData(), Folder.Native("b.flac").constData()), 0);
    const QByteArray before = Content("b.flac");
    Edit(path, [](AudioInformation& tag) { tag.Title = u"New"_s; });
    EXPECT_TRUE(Probe("a.flac").contains("title=new"));
    EXPECT_EQ(Content("b.flac"), before);
}

}  // namespace
}  // namespace Sonmira
