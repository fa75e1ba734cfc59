#include "MadeSources.h"
#include "RealEngine.h"
#include "codecs/sound/SoundReader.h"
#include "engine/Destination.h"
#include "engine/StopCommands.h"
#include "platform/EventLoop.h"
#include "platform/Paths.h"
#include "support/Sanitized.h"
#include "support/Timing.h"
#include "support/Tool.h"

#include <QTimer>

#include <chrono>
#include <filesystem>
#include <thread>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

constexpr const char* Seconds = UnderSanitizers ? "15" : "90";
constexpr const char* Pieces = UnderSanitizers ? "60" : "600";
constexpr std::int64_t MostMilliseconds = 250;
// A stop comes as early as here. The bar of a file in which nobody hears it goes on to 100.
constexpr int EarlyPercent = 2;
constexpr int MostPercent = 60;
// Monkey's Audio tells how far it is once in a while only. A screen that takes as long to paint as that sees
// some steps of it however fast the machine is.
constexpr std::chrono::milliseconds SlowScreen{30};
constexpr const char* TimedSources[] = {"wav", "mp3", "flac", "ape", "mpc", "aac", "alac"};

enum class Stage { Decoding, Copying, Streaming, Encoding };
constexpr const char* StageNames[] = {"decoding", "copying", "streaming", "encoding"};
enum class Command { CancelByMenu, CancelByToolbar, SkipFile, CancelOneFile };
constexpr const char* CommandNames[] = {"CancelByMenu", "CancelByToolbar", "SkipFile", "CancelOneFile"};

struct Stop {
    QByteArray Source;
    OutputFormat Format;
    Stage At;
    Command By;

    bool EndsTheRun() const { return By == Command::CancelByMenu || By == Command::CancelByToolbar; }
    bool IsMonkeysWork() const {
        return At == Stage::Decoding ? Source == "ape"
                                     : At == Stage::Encoding && Format.Name == FormatName::Ape;
    }
    bool IsAlacDecoder() const { return At == Stage::Decoding && Source == "alac"; }
    // What the stream copy was doing or is given a stop before it begins.
    bool Fails() const {
        if (At == Stage::Decoding) return !EndsTheRun() && !Format.FromWav;
        return At != Stage::Encoding;
    }
    bool LeavesOutput() const {
        if (At == Stage::Decoding) return !EndsTheRun();
        return At != Stage::Copying || !EndsTheRun();
    }
    // An encoder works on what a stopped decoder or copy has left, and what hears no stop ends by itself.
    bool IsGivenUpAtOnce() const {
        const bool encodesTheRest = Format.FromWav && At != Stage::Encoding && LeavesOutput();
        const bool hearsNothing =
            IsAlacDecoder() || (At == Stage::Encoding && Format.Name == FormatName::Flac) ||
            (By == Command::CancelOneFile && (At == Stage::Decoding || At == Stage::Encoding));
        return !encodesTheRest && !hearsNothing;
    }
};

class TimedStop : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        Ending = GetParam();
        const QByteArray wav = Folder.Native("in.wav");
        ASSERT_EQ(
            RunTool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i",
                     QByteArray("sine=frequency=330:beep_factor=4:duration=") + Seconds, "-ac", "2", wav})
                .ExitCode,
            0);
        MakeSource(wav, Folder.Native("made." + Ending));
        AddFileRecord(Items, Host, Folder.MakeFile("song." + Ending));
        AddFileRecord(Items, Host, Folder.MakeFile("tail.wav"));
        Host.RemoveOriginal = true;
    }

    void PutSourcesBack() const {
        const auto link = [this](const char* from, const QByteArray& to) {
            std::filesystem::remove(Folder.Native(to).toStdString());
            std::filesystem::create_hard_link(Folder.Native(from + Ending).toStdString(),
                                              Folder.Native(to).toStdString());
        };
        link("made.", "song." + Ending);
        Folder.MakeFile("tail.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
        std::filesystem::remove_all(Folder.Native("out").toStdString());
        Folder.MakeFolder("out");
    }

    QByteArray Output(const Stop& stop) const {
        return Folder.Native(QByteArray("out/song.") + stop.Format.Ending);
    }

    bool IsIn(const Stop& stop) const {
        if (Host.Rows.size() != 1) return false;
        const bool decodes = Run.EncodageParticulier() && Run.CurrentInput() == Run.RealFileName();
        if (stop.At == Stage::Decoding) return decodes;
        if (decodes) return false;
        if (stop.At == Stage::Copying) return NativeExists(ToNative(TempWavPathFor(Run.CurrentInput(), 3)));
        return NativeExists(Output(stop));
    }

    void Click(Command command) {
        if (command == Command::CancelByMenu) CancelByMenu(Run, Items, Codecs.Parts());
        if (command == Command::CancelByToolbar) CancelByToolbar(Run, Items, Codecs.Parts());
        if (command == Command::SkipFile) SkipFile(Run, Codecs.Parts());
        if (command == Command::CancelOneFile) CancelOneFile(Run);
    }

    void Check(const Stop& stop) {
        SCOPED_TRACE(std::string(stop.Format.Ending) + " while " + StageNames[static_cast<int>(stop.At)] +
                     " by " + CommandNames[static_cast<int>(stop.By)]);
        PutSourcesBack();
        std::optional<Clock::time_point> clicked;
        std::optional<Clock::time_point> givenUp;
        int farthest = 0;  // percent, after the click
        Host.AtYield = [&] {
            if (clicked && !givenUp) {
                if (Row().Icon != ConversionIcon) {
                    givenUp = Clock::now();
                } else {
                    farthest = std::max(farthest, Host.Progress);
                }
            } else if (!clicked && IsIn(stop)) {
                if (Host.Progress >= EarlyPercent) {
                    clicked = Clock::now();
                    Click(stop.By);
                } else if (stop.IsMonkeysWork()) {
                    std::this_thread::sleep_for(SlowScreen);
                }
            }
        };
        Convert(stop.Format.Name);
        Host.AtYield = nullptr;
        ASSERT_TRUE(clicked) << "the stage was never reached";
        if (stop.IsGivenUpAtOnce()) {
            EXPECT_LT(farthest, MostPercent) << "the work went on";
            if (LooksAtMilliseconds()) {
                const auto took = givenUp.value_or(Clock::now()) - *clicked;
                EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(took).count(),
                          MostMilliseconds);
            }
        }
        CheckRows(stop);
        EXPECT_EQ(NativeExists(Output(stop)), stop.LeavesOutput());
        if (stop.At == Stage::Copying) {
            EXPECT_TRUE(NativeExists(ToNative(TempWavPathFor(Folder.Path("song." + Ending), 3))))
                << "what the copy has made stays";
        }
        EXPECT_EQ(NativeExists(Folder.Native("song." + Ending)), stop.Fails())
            << "a source goes where its row says converted, whatever was written";
        EXPECT_TRUE(Host.ControlsEnabled);
        EXPECT_FALSE(Run.Busy());
        EXPECT_FALSE(Run.FileError());
    }

    void CheckRows(const Stop& stop) {
        EXPECT_EQ(Row().Icon, stop.Fails() ? ErrorIcon : ConvertedIcon);
        if (stop.At == Stage::Encoding) {
            CheckEncodedRow(stop);
        } else if (!stop.Fails() && !stop.LeavesOutput()) {
            EXPECT_EQ(Row().Progress, u"0 %"_s);
        } else if (stop.Fails() && !EncoderWritesItsRow(stop)) {
            EXPECT_EQ(Row().Progress, u"line 96"_s);
        }
        ASSERT_EQ(Host.Rows.size(), stop.EndsTheRun() ? 1U : 2U);
        EXPECT_EQ(Host.Rows.back().Icon, stop.EndsTheRun() && stop.Fails() ? ErrorIcon : ConvertedIcon);
    }

    // Behind a copy that was given up the encoder works on what is there, and two of them tell the row.
    static bool EncoderWritesItsRow(const Stop& stop) {
        return stop.LeavesOutput() && stop.Format.FromWav && stop.Format.Name != FormatName::Ape;
    }

    void CheckEncodedRow(const Stop& stop) {
        const bool isWhole = stop.By == Command::CancelOneFile || stop.Format.Name == FormatName::Flac;
        if (stop.Format.Name == FormatName::Ape) {
            EXPECT_EQ(Row().Progress, Ending == "mp3" ? u"100 %"_s : u"0 %"_s) << "only a copy writes 100";
        } else {
            EXPECT_EQ(Row().Progress == u"100 %", isWhole) << Row().Progress.toStdString();
        }
    }

    QByteArray Ending;
};

TEST_P(TimedStop, IsHeardAtEveryStageOfEveryRoute) {
    const bool isDecoded = Ending != "wav" && Ending != "mp3";
    for (const Stage stage : {Stage::Decoding, Stage::Copying, Stage::Streaming, Stage::Encoding}) {
        if (stage == Stage::Decoding && !isDecoded) continue;
        if (stage == Stage::Copying && Ending != "mp3") continue;
        // Each source begins with another command, so that all meet all.
        const auto* place = std::find_if(std::begin(TimedSources), std::end(TimedSources),
                                         [this](const char* source) { return Ending == source; });
        auto next = place - std::begin(TimedSources);
        for (const OutputFormat& format : OutputFormats) {
            if (stage == Stage::Streaming && format.FromWav) continue;
            if ((stage == Stage::Copying || stage == Stage::Encoding) && !format.FromWav) continue;
            Check({Ending, format, stage, static_cast<Command>(next++ % 4)});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, TimedStop, ::testing::ValuesIn(TimedSources),
                         [](const auto& source) { return std::string(source.param); });

// Where no header counts the sound, all packets of a file are read to tell its length. That takes long for a
// long file, and lets the real event loop run.
class StopInLengthScan : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    // Hours of sound in little space: some seconds, again and again.
    void MakeEndless(const QByteArray& ending) const {
        const QByteArray name = Folder.Native("song." + ending);
        const QByteArray codec = ending == "ogg" ? "libvorbis" : "libmp3lame";
        const QByteArray piece = Folder.Native(ending == "ogg" ? "piece.ogg" : "piece.mp3");
        ASSERT_EQ(
            RunTool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=frequency=330:duration=20", "-ac",
                     "1", "-c:a", codec, "-b:a", "48k", "-write_xing", "0", "-id3v2_version", "0", piece})
                .ExitCode,
            0);
        if (ending == "avi") {
            const QList<QByteArray> loop = {"ffmpeg", "-v", "error", "-stream_loop", Pieces, "-i"};
            ASSERT_EQ(RunTool(loop + QList<QByteArray>{piece, "-c", "copy", name}).ExitCode, 0);
        } else {
            Folder.MakeFile("song." + ending, ContentOf(piece).repeated(QByteArray(Pieces).toInt()));
        }
    }
};

// What this process has read so far; nothing on a system that does not count it.
qint64 BytesRead() {
    const QByteArray counts = ContentOf("/proc/self/io");
    return counts.mid(counts.indexOf(": ") + 2, counts.indexOf('\n') - counts.indexOf(": ") - 2).toLongLong();
}

TEST_P(StopInLengthScan, IsHeardAtOnce) {
    MakeEndless(GetParam());
    const QByteArray file = QByteArray("song.") + GetParam();
    const auto size = static_cast<qint64>(std::filesystem::file_size(Folder.Native(file).toStdString()));
    TakeFile(Folder.Path(file));
    std::optional<Clock::time_point> clicked;
    qint64 readBefore = 0;
    WhileFilesAreScanned(YieldToEventLoop);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (!Run.Busy() || clicked) return;
        clicked = Clock::now();
        readBefore = BytesRead();
        CancelByToolbar(Run, Items, Codecs.Parts());
    });
    user.start(0);
    Convert(FormatName::Wav);
    const auto took = Clock::now() - clicked.value_or(Clock::now());
    ASSERT_TRUE(clicked);
    EXPECT_LT(BytesRead() - readBefore, size * MostPercent / 100) << "the scan went on";
    if (LooksAtMilliseconds()) {
        EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(took).count(), MostMilliseconds);
    }
    EXPECT_EQ(Row().Icon, ErrorIcon);
    EXPECT_EQ(Row().Progress, u"line 96"_s);
    EXPECT_LT(ContentOf(Folder.Native("out/song.wav")).size(), 1000) << "the copy did not begin";
    EXPECT_TRUE(Host.ControlsEnabled);
}

INSTANTIATE_TEST_SUITE_P(Of, StopInLengthScan, ::testing::Values("mp3", "ogg", "avi"),
                         [](const auto& source) { return std::string(source.param); });

}  // namespace
}  // namespace Sonmira
