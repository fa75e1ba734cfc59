#include "Conversion.h"
#include "codecs/ApeFunctions.h"
#include "codecs/AudioInformation.h"
#include "codecs/FlacEncoder.h"
#include "codecs/MpcEncoder.h"
#include "codecs/WavDecoders.h"
#include "platform/Failure.h"
#include "support/Sanitized.h"
#include "support/Timing.h"
#include "support/Tool.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <random>

namespace Sonmira {
namespace {

constexpr auto MostTime = std::chrono::seconds(60);  // of the processor
constexpr long MostKilobytes = 300 * 1024;

// One component at work on a file as the run of a file uses it: its length first, then its sound.
struct Component {
    const char* Name;
    // What makes an intact file of "in.wav"; empty where that is the file.
    QList<QByteArray> Command;
    void (*Use)(const QString& from, const QString& to);
    // Of the file, where it matters and is not the name.
    const char* Ending = nullptr;
};

void PrintTo(const Component& component, std::ostream* stream) {
    *stream << component.Name;
}

void UseAac(const QString& from, const QString& to) {
    AacDecoder decoder;
    decoder.SetInputFile(from);
    decoder.SetOutputFile(to);
    decoder.DecodeToWav();
}

void UseAlac(const QString& from, const QString& to) {
    double duration = 0;
    qint32 rate = 0;
    qint32 channels = 0;
    qint32 bits = 0;
    EXPECT_GE(AlacDecoder().IsAlac(from), 0);
    AlacDecoder().TrackInfo(from, duration, rate, channels, bits);
    AlacDecoder().DecodeToWav(from, to);
}

void UseFlac(const QString& from, const QString& to) {
    FlacDecoder decoder;
    EXPECT_GE(FlacDecoder().TrackLength(from), 0);
    decoder.SetInputFile(from);
    decoder.SetOutputFile(to);
    decoder.DecodeToWav();
}

void UseMpc(const QString& from, const QString& to) {
    EXPECT_GE(MpcDecoder().TrackLength(from), 0);
    MpcDecoder().DecodeToWav(from, to);
}

void UseFlacEncoder(const QString& from, const QString& to) {
    FlacEncoder().EncodeFromWav(from, to, 5);
}

void UseMpcEncoder(const QString& from, const QString& to) {
    MpcEncoder().EncodeFromWav(from, to);
}

void UseWma(const QString& from, const QString& to) {
    ConvertFile(from, to, [](AudioFile& file) { file.SelectWmaFormat(43); });
}

void UseApe(const QString& from, const QString& to) {
    const qint32 goOn = 0;
    EXPECT_GE(GetDurationTrack(from), 0);
    DecompressFile(from, to, {}, goOn);
}

void UseApeEncoder(const QString& from, const QString& to) {
    const qint32 goOn = 0;
    CompressFile(from, to, 2000, {}, goOn);
}

void UseSimpleTags(const QString& from, const QString& /*to*/) {
    std::array<char, 128> block{};
    GetID3Tag(from, block);
    TagFileSimple(from, QStringLiteral("Artist"), {}, QStringLiteral("Title"), {}, QStringLiteral("Rock"), {},
                  {}, 1, 1);
}

void UseTags(const QString& from, const QString& /*to*/) {
    AudioInformation tags;
    for (const qint16 kind : {qint16{1}, qint16{2}}) {
        tags.SetTagKind(kind);
        tags.LoadTag(from);
        tags.Title = QStringLiteral("Title");
        tags.SaveTag(from);
    }
}

class HostileComponent : public ::testing::TestWithParam<Component> {
protected:
    void SetUp() override {
        Folder.MakeFile("in.wav", WavOf(MakeSweep(22050, 2, 40000), WavKind::Signed16));
        QList<QByteArray> command = GetParam().Command;
        if (command.isEmpty()) {
            Intact = ContentOf(Folder.Native("in.wav")).first(40'000);
            return;
        }
        const QByteArray program = command.first();
        if (program == "mpcenc" || program == "jmac") {
            Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 80000), WavKind::Signed16));
            command += Folder.Native("in.wav");
        } else if (program == "flac") {
            Folder.MakeFile("in.wav", WavOf(MakeSweep(22050, 2, 20000), WavKind::Signed32));
            command += {"-s", Folder.Native("in.wav"), "-o"};
        } else {
            command = QList<QByteArray>{"ffmpeg", "-v", "error", "-i", Folder.Native("in.wav")} + command;
        }
        command += Folder.Native(FileName());
        ASSERT_EQ(RunTool(command).ExitCode, 0);
        Intact = ContentOf(Folder.Native(FileName()));
        ASSERT_GT(Intact.size(), 1000);
    }

    static QByteArray FileName() { return "a." + Ending(); }
    static QByteArray Ending() { return GetParam().Ending == nullptr ? GetParam().Name : GetParam().Ending; }

    // Whatever it is, it must end well or with a text, soon.
    void Use(const QByteArray& content) {
        const QString path = Folder.MakeFile("hostile." + Ending(), content);
        const auto start = CpuClock::now();
        try {
            GetParam().Use(path, Folder.Path("out"));
        } catch (const Failure& failure) {
            EXPECT_FALSE(failure.Description.isEmpty());
        }
        EXPECT_LT(CpuClock::now() - start, MostTime);
    }

    void TearDown() override {
#ifndef __SANITIZE_ADDRESS__
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        EXPECT_LT(usage.ru_maxrss, MostKilobytes);
#endif
    }

    TestFolder Folder;
    QByteArray Intact;
};

TEST_P(HostileComponent, CutAtAnyKilobyteEndsWell) {
    constexpr qsizetype Step = UnderSanitizers ? 16384 : 1024;
    for (qsizetype size = 0; size < Intact.size(); size += Step) Use(Intact.first(size));
}

TEST_P(HostileComponent, OfRandomBytesEndsWell) {
    std::mt19937 random(20240301);
    for (int round = 0; round < 20; round += UnderSanitizers ? 3 : 1) {
        QByteArray bytes(round * 3000, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        // Some with the first bytes of a good file, so that it is taken for one.
        if (round % 2 == 0) bytes.replace(0, 8 * round, Intact.first(8 * round));
        Use(bytes);
    }
}

TEST_P(HostileComponent, WithHugeNumbersInItsHeaderEndsWell) {
    constexpr qsizetype Step = UnderSanitizers ? 14 : 4;
    for (qsizetype at = 0; at < 200; at += Step) {
        for (const char byte : {'\xFF', '\x7F'}) {
            QByteArray lying = Intact;
            lying.replace(at, 4, QByteArray(4, byte));
            Use(lying);
        }
    }
}

TEST_P(HostileComponent, WithChangedBytesEndsWell) {
    std::mt19937 random(20240302);
    for (int round = 0; round < (UnderSanitizers ? 10 : 40); ++round) {
        QByteArray damaged = Intact;
        const qsizetype area = round % 2 == 0 ? std::min<qsizetype>(damaged.size(), 600) : damaged.size();
        for (int change = 0; change < 1 + round; ++change) {
            damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(area))] =
                static_cast<char>(random());
        }
        Use(damaged);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileComponent,
    ::testing::Values(Component{"aac", {"-c:a", "aac"}, UseAac}, Component{"m4a", {"-c:a", "aac"}, UseAac},
                      Component{"latm", {"-c:a", "aac", "-f", "latm"}, UseAac},
                      Component{"alac", {"-c:a", "alac", "-f", "mov"}, UseAlac},
                      Component{"caf", {"-c:a", "alac"}, UseAlac},
                      Component{"flac", {"-c:a", "flac"}, UseFlac},
                      Component{"wide", {"flac", "-0"}, UseFlac}, Component{"oga", {"-c:a", "flac"}, UseFlac},
                      Component{"mpc", {"mpcenc", "--silent", "--overwrite"}, UseMpc},
                      Component{"wma", {"-c:a", "wmav2"}, UseWma},
                      Component{"mp3", {"-c:a", "libmp3lame"}, UseWma},
                      Component{"avi", {"-c:a", "ac3"}, UseWma}, Component{"flacenc", {}, UseFlacEncoder},
                      Component{"mpcenc", {}, UseMpcEncoder}, Component{"ape", {"jmac", "c2"}, UseApe},
                      Component{"apeenc", {}, UseApeEncoder},
                      Component{"simpletagape", {"jmac", "c2"}, UseSimpleTags, "ape"},
                      Component{"simpletagflac", {"-c:a", "flac"}, UseSimpleTags, "flac"},
                      Component{"simpletagmpc", {"mpcenc", "--silent", "--overwrite"}, UseSimpleTags, "mpc"},
                      Component{"tagmp3", {"-c:a", "libmp3lame", "-metadata", "title=a"}, UseTags, "mp3"},
                      Component{"tagaac", {"-c:a", "aac"}, UseTags, "aac"},
                      Component{"tagogg", {"-c:a", "libvorbis", "-metadata", "title=a"}, UseTags, "ogg"},
                      Component{"tagflac", {"-c:a", "flac", "-metadata", "title=a"}, UseTags, "flac"},
                      Component{"tagwma", {"-c:a", "wmav2", "-metadata", "title=a"}, UseTags, "wma"},
                      Component{"tagm4a", {"-c:a", "aac", "-metadata", "title=a"}, UseTags, "m4a"},
                      Component{"tagwav", {"-c:a", "pcm_s16le", "-metadata", "title=a"}, UseTags, "wav"},
                      Component{"tagape", {"jmac", "c2"}, UseTags, "ape"},
                      Component{"tagmpc", {"mpcenc", "--silent", "--overwrite"}, UseTags, "mpc"}),
    [](const auto& component) { return std::string(component.param.Name); });

}  // namespace
}  // namespace Sonmira
