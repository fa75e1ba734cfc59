#include "MadeSources.h"
#include "RealEngine.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "support/Tool.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

// Runs that are ended from outside at any moment, with removal of the originals: no music is lost, and what
// is left lies where it may.
class KilledRun : public RealEngine, public ::testing::WithParamInterface<int> {
protected:
    static constexpr int Seconds = 4;
    static constexpr const char* Songs[] = {"a.wav", "b.flac", "c.mp3", "d.ape", "e.aac"};

    KilledRun() {
        const QByteArray wav = WavOf(MakeSweep(44100, 2, std::int64_t{Seconds} * 44100), WavKind::Signed16);
        Folder.MakeFile("in.wav", wav);
        for (const char* song : Songs) {
            Folder.MakeFolder("made");
            MakeSource(Folder.Native("in.wav"), Folder.Native(QByteArray("made/") + song));
        }
    }

    QByteArray Made(const char* song) const { return ContentOf(Folder.Native(QByteArray("made/") + song)); }

    void PutSourcesBack() const {
        for (const char* folder : {"Music", "out", "data", "temp"}) {
            fs::remove_all(Folder.Native(folder).toStdString());
            Folder.MakeFolder(folder);
        }
        for (const char* song : Songs) Folder.MakeFile(QByteArray("Music/") + song, Made(song));
    }

    // Converts everything in a process of its own, which is killed after so many yields of its run.
    void RunAndKill(QStringView format, int yields) {
        const pid_t process = fork();
        ASSERT_GE(process, 0);
        if (process == 0) {
            setpgid(0, 0);
            qputenv("XDG_DATA_HOME", Folder.Native("data"));
            qputenv("TMPDIR", Folder.Native("temp"));
            AddMusic();
            Host.RemoveOriginal = true;
            Host.AtYield = [left = yields]() mutable {
                if (--left <= 0) kill(getpid(), SIGKILL);
            };
            Convert(format);
            _exit(0);
        }
        int status = 0;
        waitpid(process, &status, 0);
        WasKilled = WIFSIGNALED(status);
        // A program that it had started ends at the end of its input.
        while (kill(-process, 0) == 0) usleep(1000);
    }

    QByteArray Trashed(const char* song) const {
        return ContentOf(Folder.Native(QByteArray("data/Trash/files/") + song));
    }

    static qint64 FramesOf(const QByteArray& file) {
        return RunTool({"ffmpeg", "-v", "quiet", "-i", file, "-f", "s16le", "-ac", "2", "-ar", "44100", "-"})
                   .Output.size() /
               4;
    }

    // Names in a folder and all below it.
    static QList<QByteArray> NamesIn(const QByteArray& folder) {
        QList<QByteArray> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.toStdString())) {
            if (entry.is_regular_file()) names.append(entry.path().filename().c_str());
        }
        return names;
    }

    void CheckWhatIsThere(const char* ending) {
        for (const char* song : Songs) {
            const QByteArray inPlace = ContentOf(Folder.Native(QByteArray("Music/") + song));
            if (!inPlace.isEmpty()) {
                EXPECT_EQ(inPlace, Made(song)) << song;
                continue;
            }
            EXPECT_EQ(Trashed(song), Made(song)) << song << " is where it can be had back";
            const QByteArray output = Folder.Native("out/Music/" + QByteArray(song).left(2) + ending);
            EXPECT_GT(FramesOf(output), std::int64_t{Seconds} * 44100 - 5000) << song << " was whole";
        }
        for (const QByteArray& name : NamesIn(Folder.Native("out"))) {
            EXPECT_TRUE(name.size() == 2 + qsizetype(strlen(ending)) && name.endsWith(ending))
                << name.constData();
        }
        for (const QByteArray& name : NamesIn(Folder.Native("temp"))) {
            EXPECT_TRUE(name.endsWith(".wav")) << name.constData();
        }
    }

    bool WasKilled = false;
};

TEST_P(KilledRun, LosesNoMusicAndLeavesOnlyPartsOfWhatItMade) {
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    const OutputFormat& format = OutputFormats[GetParam()];
    int upTo = 60;
    for (int round = 0; round < std::max(4, qEnvironmentVariableIntValue("SONMIRA_ROUNDS")); ++round) {
        PutSourcesBack();
        const int yields = 1 + static_cast<int>(random() % static_cast<unsigned>(upTo));
        SCOPED_TRACE(std::string(format.Ending) + " killed at yield " + std::to_string(yields));
        RunAndKill(format.Name, yields);
        if (!WasKilled) upTo = std::max(upTo / 2, 4);
        CheckWhatIsThere(format.Ending);
    }
}

INSTANTIATE_TEST_SUITE_P(To, KilledRun, ::testing::Range(0, 7),
                         [](const auto& format) { return std::string(OutputFormats[format.param].Ending); });

TEST_F(RealEngine, WhatAKilledRunLeftInItsTemporaryFolderIsTheUsersAtTheNextStart) {
    Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 10L * 44100), WavKind::Signed16));
    Folder.MakeFolder("temp");
    MakeSource(Folder.Native("in.wav"), Folder.Native("song.flac"));
    TakeFile(Folder.Path("song.flac"));
    const pid_t process = fork();
    if (process == 0) {
        qputenv("TMPDIR", Folder.Native("temp"));
        Host.AtYield = [this] {
            if (Host.Progress > 30) kill(getpid(), SIGKILL);
        };
        Convert(FormatName::Mp3);
        _exit(0);
    }
    waitpid(process, nullptr, 0);
    const QByteArray users = Folder.Native("temp/sonmira-" + QByteArray::number(geteuid()));
    EXPECT_TRUE(NativeExists(users + '/' + QByteArray::number(process) + "/song.wav"));
    EXPECT_TRUE(ProcessFolder::Claim({Folder.Native("temp")}));
    EXPECT_TRUE(NativeExists(users + "/song.wav"));
    EXPECT_FALSE(NativeExists(users + '/' + QByteArray::number(process)));
}

}  // namespace
}  // namespace Sonmira
