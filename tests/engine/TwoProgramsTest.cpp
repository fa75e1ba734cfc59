#include "MadeSources.h"
#include "support/TestAudio.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <thread>

namespace Sonmira {
namespace {

// Two programs of one user that convert two albums of equal names at the same time.
class TwoPrograms : public ::testing::TestWithParam<const char*> {
protected:
    static constexpr int Songs = 3;
    static int Rounds() { return std::max(2, qEnvironmentVariableIntValue("SONMIRA_ROUNDS")); }

    static QByteArray NameOf(int song, const QByteArray& ending) {
        return "song " + QByteArray::number(song) + '.' + ending;
    }

    // Each song of an album has a sound of its own.
    void MakeAlbum(const QByteArray& album) {
        for (int song = 0; song < Songs; ++song) {
            const double pitch = (album == "a" ? 300 : 1300) + 100.0 * song;
            Folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 3L * 44100, pitch), WavKind::Signed16));
            Folder.MakeFolder(album + "/Album");
            MakeSource(Folder.Native("in.wav"), Folder.Native(album + "/Album/" + NameOf(song, GetParam())));
            Sounds[album].append(SoundOf(Folder.Native(album + "/Album/" + NameOf(song, GetParam()))));
        }
    }
    // The samples as another decoder gives them.
    QByteArray SoundOf(const QByteArray& file) const {
        return RunTool({"ffmpeg", "-v", "error", "-i", file, "-f", "s16le", "-"}).Output;
    }
    // Converts both albums at once, each into the folder that is given for it.
    void ConvertBoth(const QByteArray& toOfA, const QByteArray& toOfB) const {
        const auto convert = [this](const QByteArray& album, const QByteArray& to) {
            const ToolResult run =
                RunTool({SONMIRA_CONVERT_FOLDER, Folder.Native(album + "/Album"), Folder.Native(to), "Wav"});
            EXPECT_EQ(run.ExitCode, 0) << run.Output.constData() << run.Errors.constData();
        };
        std::thread other([&] { convert("b", toOfB); });
        convert("a", toOfA);
        other.join();
    }

    TestFolder Folder;
    QHash<QByteArray, QList<QByteArray>> Sounds;
};

TEST_P(TwoPrograms, EachWriteTheirOwnMusicIntoTwoFolders) {
    MakeAlbum("a");
    MakeAlbum("b");
    for (int round = 0; round < Rounds(); ++round) {
        const QByteArray to = "round " + QByteArray::number(round);
        ConvertBoth(to + "/a", to + "/b");
        for (const QByteArray album : {"a", "b"}) {
            for (int song = 0; song < Songs; ++song) {
                const QByteArray output = Folder.Native(to + '/' + album + "/Album/" + NameOf(song, "wav"));
                EXPECT_EQ(SoundOf(output), Sounds[album][song]) << output.constData();
            }
        }
    }
}

TEST_P(TwoPrograms, EachWriteTheirOwnMusicIntoOneFolder) {
    MakeAlbum("a");
    MakeAlbum("b");
    for (int round = 0; round < Rounds(); ++round) {
        const QByteArray to = "round " + QByteArray::number(round);
        ConvertBoth(to, to);
        for (int song = 0; song < Songs; ++song) {
            const QByteArray bare = "song " + QByteArray::number(song);
            QList<QByteArray> made;
            for (const QByteArray& name : {bare + ".wav", bare + "(1).wav"}) {
                made.append(SoundOf(Folder.Native(to + "/Album/" + name)));
            }
            EXPECT_TRUE(made.contains(Sounds["a"][song]) && made.contains(Sounds["b"][song]))
                << to.constData() << " song " << song;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(From, TwoPrograms, ::testing::Values("flac", "ape"),
                         [](const auto& ending) { return std::string(ending.param); });

}  // namespace
}  // namespace Sonmira
