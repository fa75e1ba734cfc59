#include "LostSound.h"
#include "codecs/FlacEncoder.h"
#include "codecs/MpcEncoder.h"
#include "codecs/WavDecoders.h"
#include "codecs/wav/WavWriter.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace Sonmira {
namespace {

constexpr int Rate = 44100;
constexpr qint64 Frames = 10LL * Rate;
constexpr qint64 WholeBytes = Frames * 4;

const QList<QByteArray> ToFlac = {"flac", "-s", "-f", "-o", "OUT", "IN"};
const QList<QByteArray> ToMpc = {"mpcenc", "--silent", "--overwrite", "IN", "OUT"};
const QList<QByteArray> ToAlac = {"ffmpeg", "-v",  "error",     "-i",        "IN", "-c:a", "alac",
                                  "-f",     "mp4", "-movflags", "faststart", "-y", "OUT"};
const QList<QByteArray> ToAac = {"ffmpeg",    "-v", "error", "-i", "IN", "-movflags",
                                 "faststart", "-f", "mp4",   "-y", "OUT"};

// What the decoders leave, whose failures nobody reads.
class DecodedWav : public ::testing::Test {
protected:
    QByteArray Made(const QByteArray& name, const QList<QByteArray>& command) const {
        return MadeOf(Folder, name, command, MakeNoise(Rate, 2, Frames, 0.3));
    }
    QString DecodeFlac(const QString& path) const {
        FlacDecoder decoder;
        decoder.SetInputFile(path);
        decoder.SetOutputFile(Folder.Path("out.wav"));
        return FailureTextOf([&] { decoder.DecodeToWav(); });
    }
    QString DecodeMpc(const QString& path) const {
        return FailureTextOf([&] { MpcDecoder().DecodeToWav(path, Folder.Path("out.wav")); });
    }
    QByteArray Wav() const { return ContentOf(Folder.Native("out.wav")); }

    // It counts the whole stream and holds as much as `least` bytes of it, and its reader fails behind them.
    void ExpectToClaimTheWhole(qint64 least) const {
        const QByteArray wav = Wav();
        EXPECT_EQ(ClaimedBytes(wav), WholeBytes);
        EXPECT_GE(SoundBytes(wav), least);
        EXPECT_LT(SoundBytes(wav), WholeBytes);
        const PartRead part = ReadPart(Folder.Path("out.wav"));
        EXPECT_NE(part.Failure, QString());
        EXPECT_EQ(part.Frames, SoundBytes(wav) / 4);
    }
    // It counts what there is.
    void ExpectToFit() const {
        const QByteArray wav = Wav();
        EXPECT_EQ(ClaimedBytes(wav), SoundBytes(wav));
        EXPECT_LT(SoundBytes(wav), WholeBytes);
        EXPECT_EQ(ReadPart(Folder.Path("out.wav")).Failure, QString());
    }

    TestFolder Folder;
};

TEST_F(DecodedWav, OfACutFlacClaimsTheWhole) {
    const QByteArray flac = Made("a.flac", ToFlac);
    EXPECT_NE(DecodeFlac(Folder.MakeFile("cut.flac", flac.first(flac.size() / 2))), QString());
    ExpectToClaimTheWhole(WholeBytes * 4 / 10);
    EXPECT_EQ(Wav().mid(44), ContentOf(Folder.Native("in.wav")).mid(44, SoundBytes(Wav())));
}

TEST_F(DecodedWav, OfACutFlacWithoutATotalClaimsMoreThanThereIs) {
    QByteArray flac = Made("a.flac", ToFlac);
    flac.replace(22, 4, QByteArray(4, '\0'));
    EXPECT_NE(DecodeFlac(Folder.MakeFile("cut.flac", flac.first(flac.size() / 2))), QString());
    EXPECT_GT(ClaimedBytes(Wav()), SoundBytes(Wav()));
    EXPECT_NE(ReadPart(Folder.Path("out.wav")).Failure, QString());
}

TEST_F(DecodedWav, OfACutMusepackClaimsTheWhole) {
    const QByteArray mpc = Made("a.mpc", ToMpc);
    EXPECT_NE(DecodeMpc(Folder.MakeFile("cut.mpc", mpc.first(mpc.size() / 2))), QString());
    ExpectToClaimTheWhole(WholeBytes * 4 / 10);
}

TEST_F(DecodedWav, OfAMusepackWithTwentySpoiltBytesClaimsTheWhole) {
    QByteArray mpc = Made("a.mpc", ToMpc);
    // The head of a packet, behind which the stream cannot be followed.
    const qsizetype packet = mpc.indexOf("AP", mpc.size() / 2);
    ASSERT_GT(packet, 0);
    mpc.replace(packet, 20, QByteArray(20, '\xFF'));
    EXPECT_NE(DecodeMpc(Folder.MakeFile("spoilt.mpc", mpc)), QString());
    ExpectToClaimTheWhole(WholeBytes * 3 / 10);
}

TEST_F(DecodedWav, OfAStoppedDecoderFits) {
    FlacDecoder flac;
    Made("a.flac", ToFlac);
    flac.SetInputFile(Folder.Path("a.flac"));
    flac.SetOutputFile(Folder.Path("out.wav"));
    flac.Progress = [&](qint16 percent) {
        if (percent >= 30) flac.StopCodec();
    };
    flac.DecodeToWav();
    ExpectToFit();
    MpcDecoder mpc;
    Made("a.mpc", ToMpc);
    mpc.Progress = [&](qint32 total, qint32 done) {
        if (done > total / 3) mpc.StopCodec();
    };
    mpc.DecodeToWav(Folder.Path("a.mpc"), Folder.Path("out.wav"));
    ExpectToFit();
}

// AAC and Apple Lossless are told to have failed by an answer of 0, behind which no output is made of a row
// that counts as converted.
TEST_F(DecodedWav, OfACutMp4ClaimsTheWholeAndIsAnAnswerOfOne) {
    const QByteArray alac = Made("a.alac", ToAlac);
    const QString cutAlac = Folder.MakeFile("cut.alac", alac.first(alac.size() / 2));
    EXPECT_EQ(AlacDecoder().DecodeToWav(cutAlac, Folder.Path("out.wav")), 1);
    ExpectToClaimTheWhole(WholeBytes * 4 / 10);
    const QByteArray aac = Made("a.m4a", ToAac);
    AacDecoder decoder;
    decoder.SetInputFile(Folder.MakeFile("cut.aac", aac.first(aac.size() / 2)));
    decoder.SetOutputFile(Folder.Path("out.wav"));
    EXPECT_EQ(decoder.DecodeToWav(), 1);
    ExpectToClaimTheWhole(WholeBytes * 4 / 10);
}

TEST_F(DecodedWav, IsEncodedAsFarAsItGoesBeforeTheEncoderFails) {
    const QByteArray flac = Made("a.flac", ToFlac);
    DecodeFlac(Folder.MakeFile("cut.flac", flac.first(flac.size() / 2)));
    const qint64 frames = SoundBytes(Wav()) / 4;
    const QString wav = Folder.Path("out.wav");
    EXPECT_NE(FailureTextOf([&] { FlacEncoder().EncodeFromWav(wav, Folder.Path("b.flac"), 5); }), QString());
    EXPECT_EQ(FramesByFfmpeg(Folder.Native("b.flac"), 2), frames);
    EXPECT_NE(FailureTextOf([&] { MpcEncoder().EncodeFromWav(wav, Folder.Path("b.mpc")); }), QString());
    EXPECT_EQ(MpcDecoder().TrackLength(Folder.Path("b.mpc")), frames / Rate);
}

// A disk that takes no more: the limit of one file stands for it.
class FullDisk : public DecodedWav {
protected:
    static constexpr rlim_t Most = 1'000'000;

    void SetUp() override {
        ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &Usual), 0);
        Handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    void TearDown() override {
        setrlimit(RLIMIT_FSIZE, &Usual);
        std::signal(SIGXFSZ, Handler);
    }
    void Fill() {
        rlimit full = Usual;
        full.rlim_cur = Most;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    }

    rlimit Usual = {};
    void (*Handler)(int) = SIG_DFL;
};

TEST_F(FullDisk, LeavesAWavThatClaimsTheWhole) {
    Made("a.flac", ToFlac);
    Made("a.mpc", ToMpc);
    Made("a.alac", ToAlac);
    const QString wav = Folder.Path("out.wav");
    Fill();
    EXPECT_NE(DecodeFlac(Folder.Path("a.flac")), QString());
    ExpectToClaimTheWhole(Most / 2);
    EXPECT_NE(DecodeMpc(Folder.Path("a.mpc")), QString());
    ExpectToClaimTheWhole(Most / 2);
    EXPECT_EQ(AlacDecoder().DecodeToWav(Folder.Path("a.alac"), wav), 1);
    ExpectToClaimTheWhole(Most / 2);
}

TEST(WavClaim, TellsALossAboveTwoGigabytesToo) {
    for (const qint64 there : {qint64{0}, qint64{1'000'000}, qint64{2'147'479'000}, qint64{2'200'000'000},
                               qint64{4'294'000'000}}) {
        for (const qint64 wanted : {qint64{0}, there, there + 4, qint64{0x7FFFF800}, qint64{3'000'000'000},
                                    qint64{9'000'000'000}}) {
            const qint64 size = WavSizeBeyond(there, wanted);
            EXPECT_GT(size, there);
            EXPECT_FALSE(IsUnknownWavSize(size)) << size;
        }
    }
    EXPECT_EQ(WavSizeBeyond(100, 1000), 1000) << "what is wanted, where that says it";
}

}  // namespace
}  // namespace Sonmira
