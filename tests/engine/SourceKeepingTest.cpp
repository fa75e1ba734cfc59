#include "MadeSources.h"
#include "RealEngine.h"
#include "engine/SelectionDriver.h"
#include "engine/StopCommands.h"
#include "platform/Paths.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What becomes of the source of a row that says converted, where there is no trash.
class SourceWithoutTrash : public RealEngine {
protected:
    SourceWithoutTrash() {
        qputenv("XDG_DATA_HOME", Folder.Native("no") + "/data");
        Folder.MakeFile("no");
        Host.RemoveOriginal = true;
        Path = qgetenv("PATH");
    }
    ~SourceWithoutTrash() override {
        qputenv("XDG_DATA_HOME", Data);
        qputenv("PATH", Path);
    }
    void TakeSource(const QByteArray& name, int seconds = 3) {
        Folder.MakeFile("in.wav",
                        WavOf(MakeSweep(44100, 2, std::int64_t{seconds} * 44100), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native(name));
        TakeFile(Folder.Path(name));
    }
    void ActAtFirst(const std::function<bool()>& when, const std::function<void()>& act) {
        Host.AtYield = [when, act, done = false]() mutable {
            if (done || !when()) return;
            done = true;
            act();
        };
    }
    void ExpectSourceStays(const QByteArray& name, const std::string& why) {
        EXPECT_EQ(Row().Icon, ConvertedIcon) << why;
        EXPECT_TRUE(NativeExists(Folder.Native(name))) << why;
    }

    const QByteArray Data = qgetenv("XDG_DATA_HOME");
    QByteArray Path;
};

TEST_F(SourceWithoutTrash, GoesForGoodWhereItsOutputIsWhole) {
    for (const char* ending : {"wav", "mp3", "flac", "ape", "mpc", "aac", "alac"}) {
        for (const OutputFormat& format : OutputFormats) {
            const QByteArray name = QByteArray("song.") + ending;
            TakeSource(name);
            Convert(format.Name);
            EXPECT_EQ(Row().Icon, ConvertedIcon);
            EXPECT_FALSE(NativeExists(Folder.Native(name))) << ending << " to " << format.Ending;
        }
    }
    EXPECT_EQ(Host.TrashedFiles, 0);
}

TEST_F(SourceWithoutTrash, StaysWhereTheOutputFolderIsGone) {
    Host.OutputFolder = Folder.Path("gone");
    for (const char* name : {"song.wav", "song.flac", "song.mp3"}) {
        for (const QStringView format : {FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
            TakeSource(name);
            Convert(format);
            ExpectSourceStays(name, format.toString().toStdString());
        }
    }
}

TEST_F(SourceWithoutTrash, StaysWhereTheEncodersProgramIsMissing) {
    TakeSource("song.wav");
    qputenv("PATH", Folder.Native());
    Convert(FormatName::Mpc);
    ExpectSourceStays("song.wav", "no mpcenc");
}

TEST_F(SourceWithoutTrash, StaysWhereNoFormatIsSelected) {
    TakeSource("song.wav");
    Host.Format = u"none of them"_s;
    JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions();
    ExpectSourceStays("song.wav", "no routine");
}

TEST_F(SourceWithoutTrash, StaysWhereTheRunWasStoppedInItsDecoderOrEncoder) {
    for (const char* name : {"song.flac", "song.aac", "song.ape", "song.mpc"}) {
        TakeSource(name, 30);
        ActAtFirst([this] { return Host.Progress > 0; },
                   [this] { CancelByMenu(Run, Items, Codecs.Parts()); });
        Convert(FormatName::Mp3);
        ExpectSourceStays(name, name);
    }
    for (const QStringView format : {FormatName::Ape, FormatName::Mpc}) {
        TakeSource("song.wav", 30);
        ActAtFirst([this] { return Host.Progress > 0; }, [this] { SkipFile(Run, Codecs.Parts()); });
        Convert(format);
        ExpectSourceStays("song.wav", format.toString().toStdString());
    }
}

TEST_F(SourceWithoutTrash, StaysWhereItsDecoderGaveUpAndAnEncoderTookTheRest) {
    for (const char* ending : {"flac", "ape"}) {
        const QByteArray name = QByteArray("song.") + ending;
        TakeSource(name, 10);
        const QByteArray whole = ContentOf(Folder.Native(name));
        Folder.MakeFile(name, whole.first(whole.size() / 2));
        Convert(FormatName::Flac);
        ExpectSourceStays(name, ending);
    }
}

TEST_F(SourceWithoutTrash, StaysWhereTheAacDecoderRefusesIt) {
    TakeSource("song.alac", 3);
    const QByteArray whole = ContentOf(Folder.Native("song.alac"));
    ActAtFirst([] { return true; }, [this] { Folder.MakeFile("song.alac", QByteArray(100, 'x')); });
    Convert(FormatName::Mp3);
    EXPECT_TRUE(NativeExists(Folder.Native("song.alac")));
}

TEST_F(SourceWithoutTrash, StaysWhereTheOutputFolderVanishesMeanwhile) {
    for (const OutputFormat& format : OutputFormats) {
        TakeSource("song.wav", 30);
        ActAtFirst([this] { return Host.Progress > 0; },
                   [this] { std::filesystem::remove_all(Folder.Native("out").toStdString()); });
        Convert(format.Name);
        EXPECT_TRUE(NativeExists(Folder.Native("song.wav"))) << format.Ending;
        Folder.MakeFolder("out");
    }
}

// The output folder is a small disk of its own.
TEST_F(SourceWithoutTrash, StaysWhereTheDiskIsFull) {
    const QByteArray disk = Folder.Native("out");
    const int apart = getuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    if (unshare(apart) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", disk.constData(), "tmpfs", 0, "size=16k") != 0) {
        GTEST_SKIP() << "no disk of our own here";
    }
    for (const char* name : {"song.wav", "song.flac"}) {
        for (const OutputFormat& format : OutputFormats) {
            TakeSource(name, 20);
            const QByteArray source = ContentOf(Folder.Native(name));
            Convert(format.Name);
            EXPECT_EQ(Row().Icon, format.FromWav ? ConvertedIcon : ErrorIcon) << format.Ending;
            EXPECT_EQ(ContentOf(Folder.Native(name)), source) << format.Ending;
            std::filesystem::remove(disk.toStdString() + "/song." + format.Ending);
        }
    }
    umount(disk.constData());
}

TEST_F(SourceWithoutTrash, StaysWhereAnotherFileCameUnderItsNameMeanwhile) {
    for (const char* name : {"song.wav", "song.flac"}) {
        for (const OutputFormat& format : OutputFormats) {
            TakeSource(name, 30);
            Folder.MakeFile("another", "another song");
            ActAtFirst([this] { return Host.Progress > 0; },
                       [&] {
                           std::filesystem::rename(Folder.Native("another").toStdString(),
                                                   Folder.Native(name).toStdString());
                       });
            Convert(format.Name);
            EXPECT_EQ(ContentOf(Folder.Native(name)), "another song") << name << " to " << format.Ending;
        }
    }
}

TEST_F(SourceWithoutTrash, StaysWhereItsRecordWasRemovedBeforeItsTurn) {
    for (const char* name : {"Music/a.wav", "Music/b.wav"}) {
        Folder.MakeFile(name, WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    }
    AddMusic();
    Items.Records.MarkRemoved(3);
    Convert(FormatName::Wav);
    EXPECT_FALSE(NativeExists(Folder.Native("Music/a.wav")));
    EXPECT_TRUE(NativeExists(Folder.Native("Music/b.wav"))) << "nothing was made of it";
}

TEST_F(RealEngine, ARunTellsWhatItPutIntoTheTrash) {
    const QByteArray wav = WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16);
    for (const char* name : {"Music/a.wav", "Music/b.wav"}) Folder.MakeFile(name, wav);
    AddMusic();
    Convert(FormatName::Ogg);
    EXPECT_EQ(Host.TrashedFiles, 0) << "nothing is removed unless the user says so";
    Host.RemoveOriginal = true;
    Convert(FormatName::Ogg);
    EXPECT_EQ(Host.TrashedFiles, 2);
    EXPECT_EQ(Host.TrashedBytes, 2 * wav.size());
    for (const char* name : {"Music/a.wav", "Music/b.wav"}) Folder.MakeFile(name, wav);
    SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path("Music"));
    EXPECT_EQ(Host.TrashedFiles, 2) << "of this run alone";
    EXPECT_EQ(Host.TrashedBytes, 2 * wav.size());
}

}  // namespace
}  // namespace Sonmira
