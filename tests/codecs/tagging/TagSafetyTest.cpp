#include "TagFiles.h"
#include "codecs/ApeFunctions.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"
#include "support/RealFiles.h"
#include "support/Sanitized.h"
#include "support/Timing.h"
#include "support/Unprivileged.h"

#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <set>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

using Lines = std::set<std::string>;

// Of the processor, for what takes some seconds.
constexpr auto MostTime = std::chrono::minutes(2);

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
    // Whether bytes from all over the middle of a file are still somewhere in it; pages of Ogg are numbered
    // anew.
    static bool HoldsSoundOf(const QByteArray& before, const QByteArray& after) {
        constexpr int Probes = 20;
        constexpr qsizetype Size = 100;
        if (before.size() < 4000) return true;
        int found = 0;
        for (int n = 0; n < Probes; ++n) {
            const qsizetype at = before.size() * (30 + 3 * n) / 100;
            found += after.contains(before.sliced(at, Size)) ? 1 : 0;
        }
        return found >= (before.startsWith("OggS") ? Probes - 3 : Probes);
    }
    // Either the title is there or the file is what it was.
    void ExpectAllOrNothing(const QByteArray& name) {
        const QByteArray before = ContentOf(Folder.Native(name));
        if (SaveTitle(Folder.Path(name), u"Saved"_s)) {
            EXPECT_EQ(TitleOf(Folder.Path(name)), u"Saved"_s) << name.constData();
            EXPECT_TRUE(HoldsSoundOf(before, ContentOf(Folder.Native(name)))) << name.constData();
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

// Formats that have no tags here: films, MPEG audio under a name of its own, several streams in one Ogg.
bool MayRefuse(const QByteArray& name) {
    const QByteArray lower = name.toLower();
    return lower.endsWith(".avi") || lower.endsWith(".adts") || lower == "multiplex.ogg";
}

class TagOfRealFile : public TagSafety, public ::testing::WithParamInterface<RealFile> {};

TEST_P(TagOfRealFile, LosesNothingByASaveAndNothingButTheTitleByAnother) {
    const QByteArray name = GetParam().Path.mid(GetParam().Path.lastIndexOf('/') + 1);
    const QByteArray content = ContentOf(GetParam().Path);
    const QString path = Folder.MakeFile(name, content);
    const QByteArray file = Folder.Native(name);
    const Lines tags = OtherTags(file);
    const QByteArray streams = StreamsOf(file);
    const QByteArray title = TitleBy(file);
    for (const qint16 kind : {1, 2}) {
        AudioInformation tag;
        tag.SetTagKind(kind);
        tag.LoadTag(path);
        if (!SaveTitle(path, tag.Title, kind)) continue;
        EXPECT_EQ(Missing(tags, OtherTags(file)), Lines());
        EXPECT_EQ(TitleBy(file), title);
        // A tag at its end may change what a player takes from a file of a few frames.
        EXPECT_TRUE(kind == 1 || StreamsOf(file) == streams);
        EXPECT_TRUE(HoldsSoundOf(content, ContentOf(file)));
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
        EXPECT_TRUE(MayRefuse(name)) << "refused: " << name.constData();
    }
    EXPECT_EQ(FilesBeside(), 1);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TagOfRealFile);
INSTANTIATE_TEST_SUITE_P(Of, TagOfRealFile, ::testing::ValuesIn(SomeOf(RealFiles(), 5)), NameOfRealFile);

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

TEST_F(TagSafety, AWavWhoseDataLiesAboutItsSizeKeepsItsSound) {
    for (const quint32 size : {0U, 1U, 1000U, 87'000U, 90'000U, 0x7FFFFFF0U, 0xFFFFFFFFU}) {
        Make("a.wav");
        QByteArray wav = Content("a.wav");
        qToLittleEndian(size, wav.data() + wav.indexOf("data") + 4);
        Folder.MakeFile("a.wav", wav);
        SCOPED_TRACE(size);
        const QByteArray sound = StreamsOf(Folder.Native("a.wav"));
        ExpectAllOrNothing("a.wav");
        EXPECT_EQ(StreamsOf(Folder.Native("a.wav")), sound);
    }
}

TEST_F(TagSafety, AnMp3WhoseTagSaysThatItTakesInTheSoundIsLeftAlone) {
    const QString path = Make("a.mp3");
    ASSERT_TRUE(SaveTitle(path, u"Title"_s));
    const QByteArray whole = Content("a.mp3");
    for (const int place : {6, 7, 8, 9}) {
        for (const char value : {'\x01', '\x20', '\x7F'}) {
            QByteArray lying = whole;
            if (lying[place] == value) continue;
            lying[place] = value;
            Folder.MakeFile("a.mp3", lying);
            SCOPED_TRACE(place);
            ExpectAllOrNothing("a.mp3");
        }
    }
    QByteArray lying = whole;
    lying[7] = 0x7F;
    Folder.MakeFile("a.mp3", lying);
    EXPECT_FALSE(SaveTitle(path, u"New"_s));
    EXPECT_EQ(Content("a.mp3"), lying);
}

TEST_F(TagSafety, AnApeTagThatSaysThatItTakesInTheSoundIsLeftAlone) {
    for (const char* name : {"a.ape", "a.mpc"}) {
        const QString path = Make(name);
        ASSERT_TRUE(SaveTitle(path, u"Title"_s));
        const QByteArray whole = Content(name);
        const qsizetype footer = whole.lastIndexOf("APETAGEX");
        ASSERT_GT(footer, 0);
        const auto size = qFromLittleEndian<quint32>(whole.constData() + footer + 12);
        for (const quint32 more : {1U, 32U, 1000U}) {
            QByteArray lying = whole;
            qToLittleEndian(size + more, lying.data() + footer + 12);
            Folder.MakeFile(name, lying);
            EXPECT_FALSE(SaveTitle(path, u"New"_s)) << name << more;
            EXPECT_EQ(Content(name), lying) << name << more;
        }
    }
}

// Each level takes room on the stack of whoever follows them.
TEST_F(TagSafety, PartsWithinPartsWithoutEndAreNoTag) {
    QByteArray mp4(
        "\0\0\0\x18"
        "ftypM4A \0\0\0\0M4A mp42",
        24);
    constexpr int Levels = 100'000;
    for (int n = Levels; n > 0; --n) {
        QByteArray head(4, '\0');
        qToBigEndian(static_cast<quint32>(8 * n), head.data());
        mp4 += head + "moov";
    }
    EXPECT_EQ(TitleOf(Folder.MakeFile("deep.m4a", mp4)), QString());
    EXPECT_FALSE(SaveTitle(Folder.Path("deep.m4a"), u"New"_s));
    QByteArray frames;
    for (int n = 0; n < 20'000; ++n) {
        QByteArray size(4, '\0');
        qToBigEndian(static_cast<quint32>((20'000 - n) * 28 - 10), size.data());
        frames += "CHAP" + size + QByteArray(2, '\0') + QByteArray("x\0", 2) + QByteArray(16, '\1');
    }
    QByteArray head("ID3\3\0\0", 6);
    for (int n = 3; n >= 0; --n) head += static_cast<char>(frames.size() >> (7 * n) & 0x7F);
    EXPECT_EQ(TitleOf(Folder.MakeFile("deep.mp3", head + frames)), QString());
    EXPECT_FALSE(SaveTitle(Folder.Path("deep.mp3"), u"New"_s));
    Make("a.flac");
    TitleOf(Folder.MakeFile("deep.flac", head + frames + Content("a.flac")));
    EXPECT_FALSE(SaveTitle(Folder.Path("deep.flac"), u"New"_s));
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
    const auto start = CpuClock::now();
    for (const char* name : Names) {
        const QString path = Make(name);
        ASSERT_TRUE(SaveTitle(path, u"Title"_s)) << name;
        const QByteArray whole = ContentOf(Folder.Native(name));
        constexpr qsizetype Dense = 40;  // where sizes stand
        const qsizetype step = UnderSanitizers ? 40 : 15;
        for (qsizetype at = 0; at < std::min<qsizetype>(whole.size(), 400);
             at += at < Dense && !UnderSanitizers ? 1 : step) {
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
    EXPECT_LT(CpuClock::now() - start, MostTime);
}

TEST_F(TagSafety, ThousandsOfFramesAndCommentsAreReadAndKept) {
    constexpr int Count = UnderSanitizers ? 1000 : 10'000;
    QByteArray frames;
    for (int n = 0; n < Count; ++n) {
        const QByteArray text = '\3' + ("name" + QByteArray::number(n)) + '\0' + "value";
        frames +=
            "TXXX" + QByteArray("\0\0\0", 3) + static_cast<char>(text.size()) + QByteArray(2, '\0') + text;
    }
    QByteArray head("ID3\4\0\0", 6);
    for (int n = 3; n >= 0; --n) head += static_cast<char>(frames.size() >> (7 * n) & 0x7F);
    Make("a.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
    const QString path = Folder.MakeFile("b.mp3", head + frames + ContentOf(Folder.Native("a.mp3")));
    const auto start = CpuClock::now();
    EXPECT_TRUE(SaveTitle(path, u"Title"_s));
    EXPECT_EQ(TitleOf(path), u"Title"_s);
    EXPECT_LT(CpuClock::now() - start, MostTime);
    const QByteArray after = ContentOf(Folder.Native("b.mp3"));
    EXPECT_TRUE(after.contains("name0")) << "the first";
    EXPECT_TRUE(after.contains("name" + QByteArray::number(Count - 1))) << "and the last";
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
