#include "Judges.h"
#include "Signals.h"
#include "codecs/ApeFunctions.h"
#include "codecs/read/MediaReader.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"

#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace Sonmira {
namespace {

constexpr qint32 GoOn = 0;
constexpr int FrameBlocks = 73728;
constexpr int FrameBytes = FrameBlocks * 4;
constexpr int Frames = 6;

class DamagedApe : public ::testing::Test {
protected:
    DamagedApe() : Wav(WavOf(MakeApeSignal("tones", 2, Frames * FrameBlocks), WavKind::Signed16)) {
        CompressFile(Folder.MakeFile("in.wav", Wav), Anew(Folder.Path("out.ape")), 2000, {}, GoOn);
        Ape = ContentOf(Folder.Native("out.ape"));
    }

    // The WAV that the bytes decode to; there must be a failure.
    QByteArray DecodedWithFailure(const QByteArray& ape) {
        bool failed = false;
        try {
            DecompressFile(Folder.MakeFile("bad.ape", ape), Folder.Path("bad.wav"), {}, GoOn);
        } catch (const Failure& failure) {
            failed = true;
            EXPECT_FALSE(failure.Description.isEmpty());
        }
        EXPECT_TRUE(failed);
        return ContentOf(Folder.Native("bad.wav"));
    }
    int FrameStart(int frame) const {
        return static_cast<int>(qFromLittleEndian<quint32>(Ape.constData() + 76 + 4 * frame));
    }

    TestFolder Folder;
    QByteArray Wav;
    QByteArray Ape;
};

TEST_F(DamagedApe, FrameIsSilentAndAllOthersAreRight) {
    QByteArray bad = Ape;
    bad[FrameStart(2) + 5000] = static_cast<char>(bad[FrameStart(2) + 5000] ^ 0x10);
    QByteArray expected = Wav;
    expected.replace(44 + 2 * FrameBytes, FrameBytes, QByteArray(FrameBytes, '\0'));
    EXPECT_TRUE(DecodedWithFailure(bad).mid(44) == expected.mid(44));
}

// Nobody reads the failure, so that the WAV has to tell its reader.
TEST_F(DamagedApe, FrameIsCountedAsSoundThatIsNotThere) {
    QByteArray bad = Ape;
    bad[FrameStart(2) + 5000] = static_cast<char>(bad[FrameStart(2) + 5000] ^ 0x10);
    const QByteArray wav = DecodedWithFailure(bad);
    EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 40), (Frames + 1) * FrameBytes);
    MediaReader reader(Folder.Path("bad.wav"));
    EXPECT_THROW(while (!reader.Read(65536).IsEmpty()){}, Failure);
}

TEST_F(DamagedApe, FrameOfAFileWithATailLeavesNoTailThatCouldCountForIt) {
    CompressFile(
        Folder.MakeFile("tail.wav", Wav + "LIST" + QByteArray::fromHex("00040000") + QByteArray(1024, 'x')),
        Anew(Folder.Path("out.ape")), 2000, {}, GoOn);
    QByteArray bad = ContentOf(Folder.Native("out.ape"));
    bad[FrameStart(5) + 5000] = static_cast<char>(bad[FrameStart(5) + 5000] ^ 0x10);
    const QByteArray wav = DecodedWithFailure(bad);
    EXPECT_EQ(wav.size(), Wav.size());
    EXPECT_GT(qFromLittleEndian<quint32>(wav.constData() + 40), Frames * FrameBytes);
}

TEST_F(DamagedApe, EndLeavesAWavThatCountsTheWhole) {
    const QByteArray wav = DecodedWithFailure(Ape.first(FrameStart(4)));
    EXPECT_EQ(wav.size(), 44 + 4 * FrameBytes);
    EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 40), Frames * FrameBytes);
}

// As if it held so many bytes of sound, of which only the first frames are there.
QByteArray Lengthened(const QByteArray& ape, qint64 bytes) {
    constexpr int tableAt = 76;
    const auto frames = static_cast<quint32>((bytes / 4 + FrameBlocks - 1) / FrameBlocks);
    const auto more = static_cast<qsizetype>(frames - Frames) * 4;
    QByteArray longer = ape.first(tableAt + qsizetype{Frames} * 4) + QByteArray(more, '\0') +
                        ape.sliced(tableAt + qsizetype{Frames} * 4);
    const auto put = [&](quint32 number, qsizetype at) { qToLittleEndian(number, longer.data() + at); };
    put(frames * 4, 16);
    put(static_cast<quint32>(bytes / 4 - qint64{frames - 1} * FrameBlocks), 60);
    put(frames, 64);
    for (quint32 frame = 0; frame < frames; ++frame) {
        const auto place = qFromLittleEndian<quint32>(longer.constData() + tableAt + 4 * frame);
        put(static_cast<quint32>(frame < Frames ? place + more : longer.size()), tableAt + 4 * frame);
    }
    // The header of the source, which is given back where it fits.
    put(static_cast<quint32>(std::min<qint64>(bytes, 0xFFFFFFFF)), tableAt + 4 * frames + 40);
    return longer;
}

// A disk that takes no more: the limit of one file stands for it. The sizes are those that in the header of a
// whole WAV count nothing that anybody believes.
TEST_F(DamagedApe, OfAnyLengthLeavesAWavThatCountsMoreThanAFullDiskTook) {
    struct rlimit usual = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    struct rlimit full = usual;
    full.rlim_cur = 2 * FrameBytes;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const qint64 bytes : {qint64{0x7FFFF800}, qint64{0xFFFFFF00}, qint64{5'000'000'000}}) {
        SCOPED_TRACE(bytes);
        const QString longer = Folder.MakeFile("longer.ape", Lengthened(Ape, bytes));
        const QString wav = Folder.Path("full.wav");
        setrlimit(RLIMIT_FSIZE, &full);
        EXPECT_THROW(DecompressFile(longer, wav, {}, GoOn), Failure);
        setrlimit(RLIMIT_FSIZE, &usual);
        EXPECT_EQ(ContentOf(Folder.Native("full.wav")).size(), 2 * FrameBytes);
        MediaReader reader(wav);
        EXPECT_THROW(while (!reader.Read(65536).IsEmpty()){}, Failure);
    }
    std::signal(SIGXFSZ, handler);
}

TEST_F(DamagedApe, SizeOfTheFramesBelowNothingGivesWhatIsThere) {
    constexpr int SizeOfFrames = 24;
    Ape.replace(SizeOfFrames, 8, QByteArray("\0\0\0\0\0\0\0\x80", 8));
    DecompressFile(Folder.MakeFile("odd.ape", Ape), Folder.Path("odd.wav"), {}, GoOn);
    EXPECT_TRUE(ContentOf(Folder.Native("odd.wav")) == Wav);
}

TEST_F(DamagedApe, EndGivesWhatIsThere) {
    const QByteArray decoded = DecodedWithFailure(Ape.first(FrameStart(4) + 10'000));
    EXPECT_TRUE(decoded.startsWith(Wav.first(44 + 4 * FrameBytes)));
    EXPECT_LE(decoded.size(), 44 + 5 * FrameBytes);
}

TEST_F(DamagedApe, SeekTableThatPointsAnywhereIsAFailure) {
    for (const quint32 entry : {0U, 1U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        QByteArray bad = Ape;
        qToLittleEndian(entry, bad.data() + 76 + 4 * 3);
        DecodedWithFailure(bad);
    }
}

TEST_F(DamagedApe, HeaderNumbersAskForNothingThatIsNotThere) {
    for (int at = 8; at < 76; at += 2) {
        if (at >= 36 && at < 52) continue;  // the MD5
        for (const quint16 number : {0x0000, 0x7FFF, 0xFFFF}) {
            QByteArray bad = Ape.first(FrameStart(1));
            qToLittleEndian(number, bad.data() + at);
            PassOver(
                [&] { DecompressFile(Folder.MakeFile("bad.ape", bad), Folder.Path("bad.wav"), {}, GoOn); });
            EXPECT_LE(ContentOf(Folder.Native("bad.wav")).size(), Wav.size() * 2) << at;
            GetDurationTrack(Folder.Path("bad.ape"));
        }
    }
}

TEST_F(DamagedApe, ThatIsNoApeAtAllIsAFailure) {
    DecodedWithFailure({});
    DecodedWithFailure("MAC ");
    DecodedWithFailure(QByteArray(100'000, 'x'));
    DecodedWithFailure(Ape.first(60));
    DecodedWithFailure(Wav);
    EXPECT_EQ(GetDurationTrack(Folder.Path("in.wav")), 0);
    EXPECT_EQ(GetDurationTrack(Folder.MakeFile("no.ape", QByteArray(1000, 'x'))), 0);
    EXPECT_EQ(GetDurationTrack(Folder.Path("none.ape")), 0);
}

TEST_F(DamagedApe, LengthIsInWholeSecondsCut) {
    EXPECT_EQ(GetDurationTrack(Folder.Path("out.ape")), Frames * FrameBlocks / 44100);
}

}  // namespace
}  // namespace Sonmira
