#include "TagFiles.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class TagInformation : public TagFileTest {
protected:
    static void Fill(AudioInformation& tag) {
        tag.Title = u"Títle"_s;
        tag.Artist = u"Artist"_s;
        tag.Album = u"Album"_s;
        tag.Comment = u"Comment"_s;
        tag.Copyright = u"Copyright"_s;
        tag.URL = u"https://example.org/"_s;
        tag.EncodedBy = u"Sonmira"_s;
        tag.Composer = u"Composer"_s;
        tag.GenreString = u"Jazz"_s;
        tag.Genre = 8;
        tag.OriginalArtist = u"Original"_s;
        tag.Year = 1999;
        tag.Track = 7;
    }
};

TEST_F(TagInformation, EveryFieldComesBackInEveryFormat) {
    for (const char* name :
         {"a.mp3", "a.ogg", "a.flac", "a.ape", "a.mpc", "a.wma", "a.wav", "a.aac", "a.m4a"}) {
        const QString path = Make(name);
        AudioInformation saved;
        saved.SetTagKind(2);
        Fill(saved);
        saved.SaveTag(path);
        AudioInformation loaded;
        loaded.SetTagKind(2);
        loaded.LoadTag(path);
        EXPECT_EQ(loaded.Title, saved.Title) << name;
        EXPECT_EQ(loaded.Artist, saved.Artist) << name;
        EXPECT_EQ(loaded.Album, saved.Album) << name;
        EXPECT_EQ(loaded.Comment, saved.Comment) << name;
        EXPECT_EQ(loaded.Copyright, saved.Copyright) << name;
        EXPECT_EQ(loaded.URL, saved.URL) << name;
        EXPECT_EQ(loaded.EncodedBy, saved.EncodedBy) << name;
        EXPECT_EQ(loaded.Composer, saved.Composer) << name;
        EXPECT_EQ(loaded.GenreString, saved.GenreString) << name;
        EXPECT_EQ(loaded.Genre, 8) << name;
        EXPECT_EQ(loaded.OriginalArtist, saved.OriginalArtist) << name;
        EXPECT_EQ(loaded.Year, 1999) << name;
        EXPECT_EQ(loaded.Track, 7) << name;
        const QByteArray seen = Probe(name);
        for (const char* line : {"tag:title=t\xC3\xADtle", "tag:artist=artist", "tag:album=album"}) {
            EXPECT_TRUE(seen.contains(line)) << name << '\n' << seen.constData();
        }
        const ToolResult decoded =
            RunTool({"ffmpeg", "-v", "error", "-i", Folder.Native(name), "-f", "null", "-"});
        EXPECT_TRUE(decoded.ExitCode == 0 && decoded.Errors.isEmpty()) << name << decoded.Errors.constData();
    }
}

TEST_F(TagInformation, TheTwoKindsOfAnMp3AreApart) {
    const QString path = Make("a.mp3", {"-map_metadata", "-1", "-write_id3v2", "0"});
    AudioInformation tag;
    tag.SetTagKind(1);
    tag.Title = u"One"_s;
    tag.Genre = 17;
    tag.SaveTag(path);
    tag.SetTagKind(2);
    tag.LoadTag(path);
    EXPECT_EQ(tag.Title, QString());
    EXPECT_EQ(tag.Genre, TagValues::OtherGenre);
    tag.Title = u"Two"_s;
    tag.SaveTag(path);
    tag.SetTagKind(1);
    tag.LoadTag(path);
    EXPECT_EQ(tag.Title, u"One"_s);
    EXPECT_EQ(tag.Genre, 17);
    EXPECT_EQ(tag.GenreString, AudioInformation::GenreName(17));
    const QByteArray block = ContentOf(Folder.Native("a.mp3")).right(128);
    EXPECT_TRUE(block.startsWith("TAGOne"));
}

TEST_F(TagInformation, AFileWithoutATagHasEmptyFields) {
    AudioInformation tag;
    Fill(tag);
    tag.LoadTag(Make("a.wav"));
    EXPECT_EQ(tag.Title, QString());
    EXPECT_EQ(tag.Year, 0);
    EXPECT_EQ(tag.Track, 0);
    EXPECT_EQ(tag.Genre, 12);
    tag.LoadTag(Folder.MakeFile("nonsense.mp3", "x"));
    EXPECT_EQ(tag.Genre, 12);
    tag.LoadTag(Folder.MakeFile("nonsense.avi", "RIFFxxxxAVI "));
    EXPECT_EQ(tag.Title, QString());
}

TEST_F(TagInformation, LoadingFailsForFoldersAndMissingFilesAndLeavesTheFields) {
    AudioInformation tag;
    tag.Title = u"kept"_s;
    EXPECT_THROW(tag.LoadTag(Folder.Path()), Failure);
    EXPECT_THROW(tag.LoadTag(Folder.Path("none.mp3")), Failure);
    ASSERT_EQ(mkfifo(Folder.Native("pipe.mp3").constData(), 0600), 0);
    EXPECT_THROW(tag.LoadTag(Folder.Path("pipe.mp3")), Failure);
    EXPECT_EQ(tag.Title, u"kept"_s);
}

TEST_F(TagInformation, TracksOfWmaCountFromZero) {
    const QString path = Make("a.wma");
    AudioInformation tag;
    tag.Track = 3;
    tag.SaveTag(path);
    EXPECT_TRUE(Probe("a.wma").contains("wm/tracknumber=4") || Probe("a.wma").contains("track=4"))
        << Probe("a.wma").constData();
    tag.LoadTag(path);
    EXPECT_EQ(tag.Track, 3);
}

TEST_F(TagInformation, AFreeGenreIsItsTextAndTheNumberForOther) {
    const QString path = Make("a.ogg");
    AudioInformation tag;
    tag.SetTagKind(2);
    tag.GenreString = u"Sea Shanty"_s;
    tag.SaveTag(path);
    tag.LoadTag(path);
    EXPECT_EQ(tag.GenreString, u"Sea Shanty"_s);
    EXPECT_EQ(tag.Genre, 12);
}

TEST_F(TagInformation, TheTextOfAGenreWinsForKindTwoAndItsNumberForKindOne) {
    const QString path = Make("a.ogg");
    AudioInformation tag;
    tag.GenreString = u"Jazz"_s;
    tag.Genre = 17;
    for (const qint16 kind : {qint16{1}, qint16{2}}) {
        tag.SetTagKind(kind);
        tag.SaveTag(path);
        AudioInformation seen;
        seen.LoadTag(path);
        EXPECT_EQ(seen.GenreString, kind == 1 ? AudioInformation::GenreName(17) : u"Jazz"_s);
    }
}

TEST_F(TagInformation, WhatItCannotNameIsKept) {
    RunTool({"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "color=red:s=16x16", "-frames:v", "1",
             Folder.Native("cover.png")});
    const QString path =
        Make("a.mp3", {"-i", Folder.Native("cover.png"), "-map", "0:a", "-map", "1:v", "-metadata",
                       "mood=calm", "-metadata", "track=3/12", "-metadata", "date=2010-05-04"});
    AudioInformation tag;
    tag.SetTagKind(2);
    tag.LoadTag(path);
    EXPECT_EQ(tag.Track, 3);
    EXPECT_EQ(tag.Year, 2010);
    tag.Title = u"New"_s;
    tag.SaveTag(path);
    const QByteArray seen = Probe("a.mp3");
    EXPECT_TRUE(seen.contains("mood=calm")) << seen.constData();
    EXPECT_TRUE(seen.contains("track=3/12")) << seen.constData();
    EXPECT_TRUE(seen.contains("date=2010-05-04")) << seen.constData();
    EXPECT_TRUE(
        RunTool({"ffprobe", "-v", "error", "-show_streams", Folder.Native("a.mp3")}).Output.contains("png"));
    tag.Track = 4;
    tag.SaveTag(path);
    EXPECT_TRUE(Probe("a.mp3").contains("track=4/12"));
}

TEST_F(TagInformation, PaddingOfTextsIsCutAtTheFirstZero) {
    const QString path = Make("a.flac");
    AudioInformation tag;
    tag.Title = u"Title"_s + QString(25, QChar(u'\0'));
    tag.Artist = QString(30, QChar(u'\0'));
    tag.SaveTag(path);
    const ToolResult tags = RunTool({"metaflac", "--export-tags-to=-", Folder.Native("a.flac")});
    EXPECT_TRUE(tags.Output.contains("TITLE=Title\n")) << tags.Output.constData();
    EXPECT_FALSE(tags.Output.contains("ARTIST")) << tags.Output.constData();
    EXPECT_EQ(RunTool({"flac", "-s", "-t", Folder.Native("a.flac")}).ExitCode, 0);
}

TEST_F(TagInformation, ASaveKeepsTheModeAndALinkALink) {
    Make("real.mp3");
    chmod(Folder.Native("real.mp3").constData(), 0640);
    std::filesystem::create_symlink("real.mp3", Folder.Native("link.mp3").toStdString());
    AudioInformation tag;
    tag.SetTagKind(2);
    tag.Title = u"New"_s;
    tag.SaveTag(Folder.Path("link.mp3"));
    EXPECT_TRUE(std::filesystem::is_symlink(Folder.Native("link.mp3").toStdString()));
    struct stat status {};
    stat(Folder.Native("real.mp3").constData(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
    EXPECT_TRUE(Probe("real.mp3").contains("title=new"));
}

TEST_F(TagInformation, ASaveThatFailsLeavesTheFileAndNothingBesideIt) {
    const QString path = Folder.MakeFile("notes.txt", "no sound");
    AudioInformation tag;
    EXPECT_THROW(tag.SaveTag(path), Failure);
    EXPECT_EQ(ContentOf(Folder.Native("notes.txt")), "no sound");
    int files = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(Folder.Native().toStdString())) {
        ++files;
    }
    EXPECT_EQ(files, 1);
    EXPECT_THROW(tag.SaveTag(Folder.Path("none.mp3")), Failure);
}

TEST_F(TagInformation, GenresHaveTheirNamesAndNoOthers) {
    EXPECT_EQ(AudioInformation::GenreName(0), u"Blues"_s);
    EXPECT_EQ(AudioInformation::GenreName(147), u"Synthpop"_s);
    EXPECT_EQ(AudioInformation::GenreName(148), QString());
    EXPECT_EQ(AudioInformation::GenreName(-1), QString());
}

TEST_F(TagInformation, OnlyTwoKindsExist) {
    AudioInformation tag;
    EXPECT_THROW(tag.SetTagKind(3), Failure);
    EXPECT_EQ(tag.TagKind(), 1);
}

}  // namespace
}  // namespace Sonmira
