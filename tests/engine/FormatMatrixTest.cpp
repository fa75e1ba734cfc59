#include "MadeSources.h"
#include "RealEngine.h"
#include "support/Sanitized.h"
#include "support/Tool.h"

#include <QtEndian>

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

class FormatMatrix : public RealEngine, public ::testing::WithParamInterface<const char*> {};

TEST_P(FormatMatrix, EveryOutputHasTheSoundAndTheLengthOfTheSource) {
    const QByteArray name = QByteArray("song.") + GetParam();
    Folder.MakeFile("in.wav", WavOf(Music(), WavKind::Signed16));
    Folder.MakeFolder("Music");
    MakeSource(Folder.Native("in.wav"), Folder.Native("Music/" + name));
    AddDropped(Items, Host, {Folder.Path("Music/" + name)});
    // An M4A or AVI comes in by the dialog, as an MP4 does.
    if (Items.FileCount == 0) AddFileRecord(Items, Host, Folder.Path("Music/" + name));
    const std::vector<double> original = Decoded(Folder.Native("in.wav"));
    const bool losslessIn =
        QList<QByteArray>{"song.wav", "song.alac", "song.flac", "song.ape"}.contains(name);
    for (const OutputFormat& format : OutputFormats) {
        Convert(format.Name);
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_EQ(Row().Icon, u"converted"_s) << format.Ending << ' ' << qPrintable(Row().Progress);
        const std::vector<double> sound = Decoded(Folder.Native("out/song." + QByteArray(format.Ending)));
        ASSERT_GT(sound.size(), original.size() * 9 / 10) << format.Ending;
        const auto frames = static_cast<double>(sound.size()) / 2;
        const QByteArray ending = format.Ending;
        const bool losslessOut = ending == "wav" || ending == "ape" || ending == "flac";
        if (losslessIn && losslessOut) {
            EXPECT_EQ(sound, original) << format.Ending;
        } else {
            const double likeness = Likeness(original, sound);
            EXPECT_NEAR(frames, static_cast<double>(Frames), 5200) << format.Ending;
            EXPECT_GT(likeness, 0.93) << format.Ending;
            RecordProperty(format.Ending, std::to_string(likeness));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(From, FormatMatrix, ::testing::ValuesIn(SomeOf(SourceEndings, 3)),
                         [](const auto& source) {
                             const std::string name = source.param;
                             return name == "mp+" ? std::string("mpplus") : name;
                         });

}  // namespace
}  // namespace Sonmira
