// With files that other encoders made.
#include "Judges.h"
#include "codecs/ApeFunctions.h"
#include "platform/Paths.h"
#include "support/RealFiles.h"
#include "support/TestFolder.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

constexpr qint32 GoOn = 0;

TEST(RealApe, DecodesToTheSoundThatFfmpegGives) {
    const TestFolder folder;
    for (const RealFile& real : RealFiles()) {
        const QByteArray& file = real.Path;
        if (!file.endsWith(".ape")) continue;
        DecompressFile(FromNative(file), folder.Path("back.wav"), {}, GoOn);
        const QByteArray wav = ContentOf(folder.Native("back.wav"));
        ASSERT_GT(wav.size(), 44) << file.constData();
        const QByteArray pcm = ApeByFfmpeg(file, qFromLittleEndian<quint16>(wav.constData() + 34)).Pcm;
        EXPECT_TRUE(wav.mid(44, pcm.size()) == pcm) << file.constData();
        EXPECT_LE(wav.size() - 44 - pcm.size(), 1) << file.constData();
    }
}

// One that the format's first encoder made: encoding its sound again gives the same bytes.
TEST(RealApe, OfAnotherEncoderComesOutTheSameWhenItsSoundIsEncodedAgain) {
    const QByteArray file = RealFilesFolder() + "/taglib+taglib/mac-399-tagged.ape";
    if (!NativeExists(file)) GTEST_SKIP() << "the file is not there";
    const TestFolder folder;
    DecompressFile(FromNative(file), folder.Path("back.wav"), {}, GoOn);
    CompressFile(folder.Path("back.wav"), folder.Path("out.ape"), 3000, {}, GoOn);
    const auto frameData = [](const QByteArray& ape) {
        const auto number = [&](qsizetype at) { return qFromLittleEndian<qint32>(ape.constData() + at); };
        return ape.mid(number(8) + number(12) + number(16) + number(20), number(24));
    };
    const QByteArray theirs = frameData(ContentOf(file));
    EXPECT_GT(theirs.size(), 50'000);
    EXPECT_TRUE(frameData(ContentOf(folder.Native("out.ape"))) == theirs);
}

}  // namespace
}  // namespace Sonmira
