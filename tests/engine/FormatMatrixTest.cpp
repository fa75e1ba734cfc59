#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/RunState.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr int Rate = 44100;
constexpr std::int64_t Frames = 3 * Rate + 17;

// Something like music: tones that come and go at random, so that it fits to itself at one place only.
TestSound Music() {
    TestSound sound = MakeSilence(Rate, 2, Frames);
    std::mt19937 random(3);
    for (int note = 0; note < 40; ++note) {
        const double pitch = 110 * std::exp2(static_cast<double>(random() % 60) / 12);
        const auto start = static_cast<std::int64_t>(random() % static_cast<unsigned>(Frames));
        const int side = static_cast<int>(random() % 2);
        for (std::int64_t n = start; n < std::min(start + Rate, Frames); ++n) {
            const double time = static_cast<double>(n - start) / Rate;
            const double tone = 0.12 * std::exp(-3 * time) * std::sin(2 * M_PI * pitch * time);
            sound.Samples[static_cast<std::size_t>(n * 2 + side)] += tone;
            sound.Samples[static_cast<std::size_t>(n * 2 + 1 - side)] += tone / 3;
        }
    }
    return sound;
}

// Another program's decoding of a file: interleaved 16-bit stereo at 44100 Hz.
std::vector<double> Decoded(const QByteArray& file) {
    const ToolResult raw =
        RunTool({"ffmpeg", "-v", "error", "-i", file, "-f", "s16le", "-ac", "2", "-ar", "44100", "-"});
    EXPECT_EQ(raw.ExitCode, 0) << raw.Errors.constData();
    std::vector<double> samples;
    for (qsizetype at = 0; at + 1 < raw.Output.size(); at += 2) {
        samples.push_back(qFromLittleEndian<qint16>(raw.Output.constData() + at));
    }
    return samples;
}

// How well the left channels fit where they fit best, from -1 to 1, a codec's delay either way allowed.
double Likeness(const std::vector<double>& one, const std::vector<double>& other) {
    constexpr std::ptrdiff_t Window = 6000;
    constexpr std::ptrdiff_t MostDelay = 4500;
    constexpr std::ptrdiff_t Start = 40000;
    double best = -1;
    for (std::ptrdiff_t delay = -MostDelay; delay <= MostDelay; ++delay) {
        double product = 0;
        double first = 0;
        double second = 0;
        for (std::ptrdiff_t n = 0; n < Window; n += 3) {
            const double a = one[static_cast<std::size_t>((Start + n) * 2)];
            const double b = other[static_cast<std::size_t>((Start + n + delay) * 2)];
            product += a * b;
            first += a * a;
            second += b * b;
        }
        if (first > 0 && second > 0) best = std::max(best, product / std::sqrt(first * second));
    }
    return best;
}

struct Source {
    const char* Name;
    QList<QByteArray> Maker;  // arguments between the WAV and the file to make
};

void PrintTo(const Source& source, std::ostream* out) {
    *out << source.Name;
}

const Source Sources[] = {
    {"song.wav", {}},
    {"song.avi", {"ffmpeg", "-c:a", "pcm_s16le"}},
    {"song.mp3", {"ffmpeg", "-c:a", "libmp3lame", "-b:a", "192k"}},
    {"song.ogg", {"ffmpeg", "-c:a", "libvorbis", "-q:a", "6"}},
    {"song.wma", {"ffmpeg", "-c:a", "wmav2", "-b:a", "192k"}},
    {"song.aac", {"ffmpeg", "-c:a", "aac", "-b:a", "192k"}},
    {"song.m4a", {"ffmpeg", "-c:a", "aac", "-b:a", "192k"}},
    {"song.alac", {"ffmpeg", "-c:a", "alac", "-f", "mp4"}},
    {"song.flac", {"ffmpeg", "-c:a", "flac"}},
    {"song.ape", {"jmac", "c2"}},
    {"song.mpc", {"mpcenc", "--overwrite", "--quality", "7"}},
    {"song.mp+", {"mpcenc", "--overwrite", "--quality", "7"}},
};

const QString Formats[] = {u"Wav"_s,
                           u"Mp3"_s,
                           u"Ogg"_s,
                           u"Wma"_s,
                           u"APE (MonKey's audio)"_s,
                           u"FLAC (Free Lossless Audio Codec)"_s,
                           u"Mpc (Musepack)"_s};
constexpr const char* Endings[] = {"wav", "mp3", "ogg", "wma", "ape", "flac", "mpc"};

class FormatMatrix : public ::testing::TestWithParam<Source> {
protected:
    FormatMatrix() {
        NumberLanguageLines();
        Host.OutputFolder = Folder.MakeFolder("out");
        Run.Levels = {2000, 5, 5};
    }

    void MakeSource(const Source& source) const {
        const QByteArray wav = Folder.Native("in.wav");
        Folder.MakeFile("in.wav", WavOf(Music(), WavKind::Signed16));
        const QByteArray file = Folder.Native("Music/" + QByteArray(source.Name));
        Folder.MakeFolder("Music");
        QList<QByteArray> command;
        if (source.Maker.isEmpty()) {
            command = {"cp", wav, file};
        } else if (source.Maker[0] == "ffmpeg") {
            command = QList<QByteArray>{"ffmpeg", "-v", "error", "-y", "-i", wav} + source.Maker.mid(1) +
                      QList{file};
        } else if (source.Maker[0] == "jmac") {
            command = {"jmac", source.Maker[1], wav, file};
        } else {
            // The program knows its files by one ending only.
            command = source.Maker + QList<QByteArray>{wav, Folder.Native("made.mpc")};
        }
        const ToolResult made = RunTool(command);
        ASSERT_EQ(made.ExitCode, 0) << made.Errors.constData();
        if (source.Maker.value(0) == "mpcenc") RunTool({"mv", Folder.Native("made.mpc"), file});
    }

    void SetFormat(const QString& format) {
        Host.Format = format;
        if (format == u"Mp3") Codecs.FileWenc.SetFormatMP3(Rate, 192, 2);
        if (format == u"Ogg") Codecs.FileWenc.SetFormatOggVorbis(Rate, 2, {}, {}, {}, 600);
        if (format == u"Wav") Codecs.FileWenc.SetFormatPCM(Rate, 2, 16);
        if (format == u"Wma") Codecs.FileWenc.SelectWmaFormat(45);
    }

    TestFolder Folder;
    RunState Run;
    HeadlessHost Host;
    CodecSet Codecs;
    Collection Items;
};

TEST_P(FormatMatrix, EveryOutputHasTheSoundAndTheLengthOfTheSource) {
    const Source& source = GetParam();
    MakeSource(source);
    const QByteArray name(source.Name);
    AddDropped(Items, Host, {Folder.Path("Music/" + name)});
    // An M4A or AVI comes in by the dialog, as an MP4 does.
    if (Items.FileCount == 0) AddFileRecord(Items, Host, Folder.Path("Music/" + name));
    const std::vector<double> original = Decoded(Folder.Native("in.wav"));
    const bool losslessIn =
        QList<QByteArray>{"song.wav", "song.alac", "song.flac", "song.ape"}.contains(name);
    for (std::size_t n = 0; n < std::size(Formats); ++n) {
        SetFormat(Formats[n]);
        JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s)
            << Endings[n] << ' ' << qPrintable(Host.Rows[0].Progress);
        const std::vector<double> sound = Decoded(Folder.Native("out/song." + QByteArray(Endings[n])));
        ASSERT_GT(sound.size(), original.size() * 9 / 10) << Endings[n];
        const auto frames = static_cast<double>(sound.size()) / 2;
        const QByteArray ending = Endings[n];
        const bool losslessOut = ending == "wav" || ending == "ape" || ending == "flac";
        if (losslessIn && losslessOut) {
            EXPECT_EQ(sound, original) << Endings[n];
        } else {
            const double likeness = Likeness(original, sound);
            EXPECT_NEAR(frames, static_cast<double>(Frames), 5200) << Endings[n];
            EXPECT_GT(likeness, 0.93) << Endings[n];
            RecordProperty(Endings[n], std::to_string(likeness));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(From, FormatMatrix, ::testing::ValuesIn(Sources), [](const auto& source) {
    std::string name = source.param.Name;
    name.erase(0, 5);
    return name == "mp+" ? std::string("mpplus") : name;
});

}  // namespace
}  // namespace Sonmira
