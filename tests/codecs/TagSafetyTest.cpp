#include "TagFiles.h"
#include "codecs/ApeFunctions.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"
#include "support/RealFiles.h"
#include "support/Sanitized.h"
#include "support/Unprivileged.h"

#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <set>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

using Lines = std::set<std::string>;

// All tags and pictures that another program finds, without those of the title, which formats keep in several
// places. Keys know no case.
Lines OtherTags(const QByteArray& file) {
    const ToolResult dump =
        RunTool({"ffprobe", "-v", "error", "-show_entries",
                 "format_tags:stream_tags:chapter_tags:stream=codec_name,codec_type,width,height", "-of",
                 "default=nw=1", file});
    Lines lines;
    for (const QByteArray& line : dump.Output.split('\n')) {
        const qsizetype sign = line.indexOf('=');
        const QByteArray key = line.left(sign).toLower();
        // The year of the original has another frame in the newer ID3v2, to which it moves.
        const bool isMoved = key == "tag:tory";
        if (sign > 0 && key != "tag:title" && !isMoved) lines.insert((key + line.sliced(sign)).toStdString());
    }
    return lines;
}

// Those of `before` that are gone.
Lines Missing(const Lines& before, const Lines& after) {
    Lines missing;
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                        std::inserter(missing, missing.end()));
    return missing;
}

QByteArray TitleBy(const QByteArray& file) {
    // Pictures have titles of their own, as streams.
    for (const char* where : {"format_tags", "stream_tags"}) {
        const ToolResult dump =
            RunTool({"ffprobe", "-v", "error", "-show_entries", where, "-of", "default=nw=1", file});
        for (const QByteArray& line : dump.Output.split('\n')) {
            if (line.toLower().startsWith("tag:title=")) return line.sliced(10);
        }
    }
    return {};
}

// The sound and, for each attached picture, its bytes, as a checksum of each stream.
QByteArray StreamsOf(const QByteArray& file) {
    return RunTool({"ffmpeg", "-v", "quiet", "-i", file, "-map", "0:a?", "-map", "0:v?", "-c:v", "copy", "-f",
                    "streamhash", "-hash", "md5", "-"})
        .Output;
}

class TagSafety : public TagFileTest {
protected:
    // Saves a title and says whether that came to an end.
    static bool SaveTitle(const QString& path, const QString& title, qint16 kind = 2) {
        try {
            AudioInformation tag;
            tag.SetTagKind(kind);
            tag.LoadTag(path);
            tag.Title = title;
            tag.SaveTag(path);
            return true;
        } catch (const Failure&) {
            return false;
        }
    }
    static QString TitleOf(const QString& path) {
        AudioInformation tag;
        tag.SetTagKind(2);
        tag.LoadTag(path);
        return tag.Title;
    }
    // Either the title is there or the file is what it was.
    void ExpectAllOrNothing(const QByteArray& name) {
        const QByteArray before = ContentOf(Folder.Native(name));
        if (SaveTitle(Folder.Path(name), u"Saved"_s)) {
            EXPECT_EQ(TitleOf(Folder.Path(name)), u"Saved"_s) << name.constData();
        } else {
            EXPECT_EQ(ContentOf(Folder.Native(name)), before) << name.constData();
        }
    }
    int FilesBeside() const {
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(Folder.Native().toStdString())) {
            files += entry.is_regular_file() ? 1 : 0;
        }
        return files;
    }
};

class TagOfRealFile : public TagSafety, public ::testing::WithParamInterface<RealFile> {};

TEST_P(TagOfRealFile, LosesNothingByASaveAndNothingButTheTitleByAnother) {
    const QByteArray name = GetParam().Path.mid(GetParam().Path.lastIndexOf('/') + 1);
    const QByteArray content = ContentOf(GetParam().Path);
    const QString path = Folder.MakeFile(name, content);
    const QByteArray file = Folder.Native(name);
    const Lines tags = OtherTags(file);
    const QByteArray streams = StreamsOf(file);
    const QByteArray title = TitleBy(file);
    AudioInformation tag;
    tag.SetTagKind(2);
    tag.LoadTag(path);
    const QString loadedTitle = tag.Title;
    const bool saved = SaveTitle(path, loadedTitle);
    if (saved) {
        EXPECT_EQ(Missing(tags, OtherTags(file)), Lines());
        EXPECT_EQ(TitleBy(file), title);
        EXPECT_EQ(StreamsOf(file), streams);
    }
    const QByteArray between = ContentOf(file);
    if (SaveTitle(path, u"Another title"_s)) {
        EXPECT_EQ(Missing(tags, OtherTags(file)), Lines());
        EXPECT_EQ(TitleOf(path), u"Another title"_s);
        if (!title.isEmpty()) {
            EXPECT_EQ(TitleBy(file), "Another title");
        }
        EXPECT_EQ(StreamsOf(file), streams);
    } else {
        EXPECT_EQ(ContentOf(file), between);
        RecordProperty("refused", name.constData());
    }
    EXPECT_EQ(FilesBeside(), 1);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TagOfRealFile);
INSTANTIATE_TEST_SUITE_P(Of, TagOfRealFile, ::testing::ValuesIn(RealFiles()), NameOfRealFile);

TEST_F(TagSafety, AFullDiskLeavesTheFileWhole) {
    signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    for (const char* name : Names) {
        const QString path = Make(name);
        const QByteArray before = ContentOf(Folder.Native(name));
        // No room for the copy, and none for what the tag adds to it.
        for (const qsizetype room : {before.size() / 2, before.size() + 64}) {
            const rlimit small{static_cast<rlim_t>(room), usual.rlim_max};
            setrlimit(RLIMIT_FSIZE, &small);
            const bool saved = SaveTitle(path, QString(300'000, u'x'));
            setrlimit(RLIMIT_FSIZE, &usual);
            EXPECT_FALSE(saved) << name << " with " << room;
            EXPECT_EQ(ContentOf(Folder.Native(name)), before) << name << " with " << room;
        }
        std::filesystem::remove(Folder.Native(name).toStdString());
        EXPECT_EQ(FilesBeside(), 0) << name;
    }
}

TEST_F(TagSafety, AReadOnlyFileOrFolderLeavesTheFileWhole) {
    for (const char* name : Names) {
        const QString path = Make(name);
        const QByteArray before = ContentOf(Folder.Native(name));
        const Unprivileged user;
        chmod(Folder.Native(name).constData(), 0444);
        EXPECT_FALSE(SaveTitle(path, u"New"_s)) << name;
        chmod(Folder.Native(name).constData(), 0644);
        chmod(Folder.Native().constData(), 0555);
        EXPECT_FALSE(SaveTitle(path, u"New"_s)) << name;
        chmod(Folder.Native().constData(), 0755);
        EXPECT_EQ(ContentOf(Folder.Native(name)), before) << name;
    }
}

TEST_F(TagSafety, AFileThatVanishedAfterItsLoadIsNotMadeAnew) {
    for (const char* name : Names) {
        AudioInformation tag;
        const QString path = Make(name);
        tag.LoadTag(path);
        std::filesystem::remove(Folder.Native(name).toStdString());
        EXPECT_THROW(tag.SaveTag(path), Failure) << name;
        EXPECT_EQ(FilesBeside(), 0) << name;
    }
}

TEST_F(TagSafety, AWavWhoseFormatLiesAboutItsSizeIsTaggedReadablyOrLeft) {
    for (const quint32 size : {0U, 1U, 15U, 17U, 18U, 20'000U, 0x7FFFFFF0U, 0xFFFFFFFFU}) {
        Make("a.wav");
        QByteArray wav = ContentOf(Folder.Native("a.wav"));
        qToLittleEndian(size, wav.data() + wav.indexOf("fmt ") + 4);
        Folder.MakeFile("a.wav", wav);
        SCOPED_TRACE(size);
        ExpectAllOrNothing("a.wav");
    }
}

TEST_F(TagSafety, AFlacWhoseFirstBlockLiesAboutItsSizeIsTaggedReadablyOrLeft) {
    for (const unsigned size : {0U, 1U, 33U, 35U, 4000U, 0xFFFFFFU}) {
        Make("a.flac");
        QByteArray flac = ContentOf(Folder.Native("a.flac"));
        for (int n = 0; n < 3; ++n) flac[5 + n] = static_cast<char>(size >> (16 - 8 * n));
        const QString path = Folder.MakeFile("a.flac", flac);
        SCOPED_TRACE(size);
        ExpectAllOrNothing("a.flac");
        Folder.MakeFile("a.flac", flac);
        try {
            TagFileSimple(path, u"Simple"_s, {}, {}, {}, {}, {}, {}, 1, 1);
            EXPECT_TRUE(RunTool({"metaflac", "--export-tags-to=-", Folder.Native("a.flac")})
                            .Output.contains("ARTIST=Simple"));
        } catch (const Failure&) {
            EXPECT_EQ(ContentOf(Folder.Native("a.flac")), flac);
        }
    }
}

TEST_F(TagSafety, DamageAnywhereInATagNeverHurtsMoreThanTheTag) {
    const auto start = std::chrono::steady_clock::now();
    for (const char* name : Names) {
        const QString path = Make(name);
        ASSERT_TRUE(SaveTitle(path, u"Title"_s)) << name;
        const QByteArray whole = ContentOf(Folder.Native(name));
        for (qsizetype at = 0; at < std::min<qsizetype>(whole.size(), 400); at += UnderSanitizers ? 40 : 10) {
            for (const qsizetype place : {at, whole.size() - 1 - at}) {
                QByteArray damaged = whole;
                damaged[place] = static_cast<char>(damaged[place] ^ 0xFF);
                Folder.MakeFile(name, damaged);
                SCOPED_TRACE(place);
                ExpectAllOrNothing(name);
            }
        }
        for (const qsizetype size : {0, 1, 7, 9, 20, 60, 200}) {
            Folder.MakeFile(name, whole.first(std::min<qsizetype>(size, whole.size())));
            ExpectAllOrNothing(name);
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST_F(TagSafety, ThousandsOfFramesAndCommentsAreReadAndKept) {
    QByteArray frames;
    for (int n = 0; n < 10'000; ++n) {
        const QByteArray text = '\3' + ("name" + QByteArray::number(n)) + '\0' + "value";
        frames +=
            "TXXX" + QByteArray("\0\0\0", 3) + static_cast<char>(text.size()) + QByteArray(2, '\0') + text;
    }
    QByteArray head("ID3\4\0\0", 6);
    for (int n = 3; n >= 0; --n) head += static_cast<char>(frames.size() >> (7 * n) & 0x7F);
    Make("a.mp3");
    const QString path = Folder.MakeFile("b.mp3", head + frames + ContentOf(Folder.Native("a.mp3")));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(SaveTitle(path, u"Title"_s));
    EXPECT_EQ(TitleOf(path), u"Title"_s);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    const QByteArray after = ContentOf(Folder.Native("b.mp3"));
    EXPECT_TRUE(after.contains("name0")) << "the first";
    EXPECT_TRUE(after.contains("name9999")) << "and the last";
}

TEST_F(TagSafety, LongTextsAndAllOfUnicodeComeBack) {
    const QString languages = u"日本語 Ελληνικά עברית 𝄞 é"_s;
    const QString millions = QString(1'000'000, u'x');
    for (const char* name : Names) {
        const QString path = Make(name);
        EXPECT_TRUE(SaveTitle(path, languages)) << name;
        EXPECT_EQ(TitleOf(path), languages) << name;
        EXPECT_EQ(TitleBy(Folder.Native(name)), languages.toUtf8()) << name;
        const QByteArray streams = StreamsOf(Folder.Native(name));
        ExpectAllOrNothing(name);
        const QByteArray before = ContentOf(Folder.Native(name));
        if (SaveTitle(path, millions)) {
            EXPECT_TRUE(TitleOf(path) == millions) << name;
        } else {
            EXPECT_EQ(ContentOf(Folder.Native(name)), before) << name;
        }
        EXPECT_EQ(StreamsOf(Folder.Native(name)), streams) << name;
    }
}

}  // namespace
}  // namespace Sonmira
