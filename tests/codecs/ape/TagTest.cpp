#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cstring>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr qint32 GoOn = 0;

class SimpleTag : public ::testing::Test {
protected:
    SimpleTag() : Wav(WavOf(MakeApeSignal("tones", 2, 44100 * 2), WavKind::Signed16)) {
        CompressFile(Folder.MakeFile("in.wav", Wav), Anew(Folder.Path("out.ape")), 1000, {}, GoOn);
        RunTool({"flac", "--silent", "--force", Folder.Native("in.wav"), "-o", Folder.Native("out.flac"),
                 "--tag=COMPOSER=somebody", "--tag=TITLE=before", "--tag=ARTIST=before"});
        RunTool({"mpcenc", "--silent", "--overwrite", Folder.Native("in.wav"), Folder.Native("out.mpc")});
    }

    void Tag(const QByteArray& name, qint32 clears = 1, qint32 writesId3 = 1) const {
        TagFileSimple(Folder.Path(name), u"Àrtist"_s, u"Album \u4E16"_s, {}, u"Comment\0\0\0"_s,
                      u"Folk-Rock"_s, u"1999"_s, {}, clears, writesId3);
    }

    // What ffprobe reads. It looks for an APEv2 tag at the very end only, so that an ID3v1 block is taken
    // away.
    QByteArray Probed(const QByteArray& name, const QByteArray& key) const {
        QByteArray content = ContentOf(Folder.Native(name));
        if (content.last(128).startsWith("TAG")) content.chop(128);
        Folder.MakeFile("probed-" + name, content);
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "format_tags=" + key, "-of", "csv=p=0",
                        Folder.Native("probed-" + name)})
            .Output.trimmed();
    }

    QByteArray BlockOf(const QByteArray& name) const {
        std::array<char, 128> block{};
        GetID3Tag(Folder.Path(name), block);
        return {block.data(), std::ssize(block)};
    }

    TestFolder Folder;
    QByteArray Wav;
};

// The seven fields as the block holds them.
void ExpectBlock(const QByteArray& block) {
    EXPECT_TRUE(block.startsWith("TAG"));
    EXPECT_EQ(block.mid(3, 30), QByteArray(30, '\0'));
    EXPECT_EQ(block.mid(33, 7), QByteArray("\xC0rtist\0", 7));
    EXPECT_EQ(block.mid(63, 8), QByteArray("Album ?\0", 8));
    EXPECT_EQ(block.mid(93, 4), "1999");
    EXPECT_EQ(block.mid(97, 30), QByteArray("Comment") + QByteArray(23, '\0'));
    EXPECT_EQ(static_cast<uchar>(block[127]), 81);
}

TEST_F(SimpleTag, OnApeIsReadByOthersAndLeavesTheSound) {
    Tag("out.ape");
    EXPECT_EQ(Probed("out.ape", "artist"), "Àrtist");
    EXPECT_EQ(Probed("out.ape", "album"), "Album \xE4\xB8\x96");
    EXPECT_EQ(Probed("out.ape", "comment"), "Comment");
    EXPECT_EQ(Probed("out.ape", "genre"), "Folk-Rock");
    ExpectBlock(BlockOf("out.ape"));
    EXPECT_EQ(ContentOf(Folder.Native("out.ape")).last(128), BlockOf("out.ape"));
    DecompressFile(Folder.Path("out.ape"), Folder.Path("back.wav"), {}, GoOn);
    EXPECT_TRUE(ContentOf(Folder.Native("back.wav")) == Wav);
}

TEST_F(SimpleTag, OnMusepackIsReadByOthersAndLeavesTheSound) {
    const auto decoded = [&] {
        RunTool({"mpcdec", Folder.Native("out.mpc"), Folder.Native("back.wav")});
        return ContentOf(Folder.Native("back.wav"));
    };
    const QByteArray before = decoded();
    ASSERT_FALSE(before.isEmpty());
    Tag("out.mpc");
    EXPECT_EQ(Probed("out.mpc", "artist"), "Àrtist");
    ExpectBlock(BlockOf("out.mpc"));
    EXPECT_TRUE(decoded() == before);
}

TEST_F(SimpleTag, OnFlacIsReadByOthersAndKeepsWhatItDoesNotName) {
    Tag("out.flac");
    EXPECT_EQ(Probed("out.flac", "artist"), "Àrtist");
    EXPECT_EQ(Probed("out.flac", "title"), "");
    EXPECT_EQ(Probed("out.flac", "composer"), "somebody");
    EXPECT_EQ(RunTool({"flac", "--silent", "--test", Folder.Native("out.flac")}).ExitCode, 0);
    ExpectBlock(BlockOf("out.flac"));
    const qsizetype size = ContentOf(Folder.Native("out.flac")).size();
    Tag("out.flac");
    EXPECT_EQ(ContentOf(Folder.Native("out.flac")).size(), size) << "a second time in the same place";
}

TEST_F(SimpleTag, WithoutClearingLeavesFieldsForWhichThereIsNoText) {
    Tag("out.flac", 0);
    EXPECT_EQ(Probed("out.flac", "title"), "before");
    EXPECT_EQ(Probed("out.flac", "artist"), "Àrtist");
}

TEST_F(SimpleTag, OnApeKeepsOtherItems) {
    // An item of a kind of its own, as another program would write it.
    QByteArray item("\x08\0\0\0\0\0\0\0Composer\0somebody", 25);
    QByteArray footer("APETAGEX\xD0\x07\0\0", 12);
    footer += QByteArray("\x39\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 20);
    Folder.MakeFile("out.ape", ContentOf(Folder.Native("out.ape")) + item + footer);
    ASSERT_EQ(Probed("out.ape", "composer"), "somebody");
    Tag("out.ape");
    EXPECT_EQ(Probed("out.ape", "composer"), "somebody");
    EXPECT_EQ(Probed("out.ape", "artist"), "Àrtist");
}

TEST_F(SimpleTag, WithoutTheOldBlockWritesNone) {
    Tag("out.ape", 1, 0);
    EXPECT_EQ(Probed("out.ape", "artist"), "Àrtist");
    EXPECT_EQ(BlockOf("out.ape"), QByteArray(128, '\0'));
}

TEST_F(SimpleTag, OnOtherFilesIsRefusedAndLeavesThem) {
    EXPECT_THROW(Tag("in.wav"), Failure);
    EXPECT_THROW(Tag("none.ape"), Failure);
    EXPECT_TRUE(ContentOf(Folder.Native("in.wav")) == Wav);
}

TEST_F(SimpleTag, BlockAtTheEndOfAFlacFileGoesFirstAndIsKeptTrue) {
    Tag("out.flac");
    const QByteArray foreign = "TAG" + QByteArray("foreign title").leftJustified(125, '\0');
    Folder.MakeFile("out.flac", ContentOf(Folder.Native("out.flac")) + foreign);
    EXPECT_EQ(BlockOf("out.flac"), foreign);
    Tag("out.flac");
    ExpectBlock(BlockOf("out.flac"));
    EXPECT_EQ(ContentOf(Folder.Native("out.flac")).last(128), BlockOf("out.flac"));
}

TEST_F(SimpleTag, ReadingLeavesTheBufferWhereThereIsNone) {
    std::array<char, 128> block{};
    block.fill('x');
    const std::array<char, 128> before = block;
    for (const char* name : {"in.wav", "out.flac", "out.ape", "none.mp3", "."}) {
        GetID3Tag(Folder.Path(name), block);
        EXPECT_EQ(block, before) << name;
    }
    Folder.MakeFile("short.mp3", "TAG");
    GetID3Tag(Folder.Path("short.mp3"), block);
    EXPECT_EQ(block, before);
    Folder.MakeFile("song.mp3", QByteArray(500, 'y') + "TAG" + QByteArray(125, 'z'));
    GetID3Tag(Folder.Path("song.mp3"), block);
    EXPECT_EQ(QByteArray(block.data(), 128), "TAG" + QByteArray(125, 'z'));
}

}  // namespace
}  // namespace Sonmira
