#include "shell/Settings.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* Programs = SONMIRA_PROGRAMS;

// Runs a command on a display of its own.
ToolResult OnDisplay(QList<QByteArray> command) {
    command.prepend(SONMIRA_WITH_DISPLAY);
    return RunTool(command);
}

QByteArray Program(const char* name) {
    return QByteArray(Programs) + '/' + name;
}

// Frames that LAME decodes from an MP3.
qint64 FramesOf(const TestFolder& folder, const QByteArray& mp3) {
    const QByteArray wav = folder.Native("decoded.wav");
    EXPECT_EQ(RunTool({"lame", "--quiet", "--decode", mp3, wav}).ExitCode, 0) << mp3.constData();
    return (ContentOf(wav).size() - 44) / 4;
}

TEST(Journey, TheTourEndsWithConvertedFilesOfTheRightLength) {
    const TestFolder folder;
    const ToolResult tour = OnDisplay({Program("sonmira_tour"), folder.Native("tour")});
    ASSERT_EQ(tour.ExitCode, 0) << tour.Output.constData() << tour.Errors.constData();
    for (const char* picture : {"1-started", "2-choosing-the-folder", "3-added", "4-format-chosen",
                                "5-converting", "6-converted"}) {
        EXPECT_GT(ContentOf(folder.Native("tour/pictures/" + QByteArray(picture) + ".png")).size(), 5000)
            << picture;
    }
    const QByteArray music = folder.Native("tour/Converted/Music");
    EXPECT_EQ(FramesOf(folder, music + "/01 - First tide.mp3"), 30 * 44100);
    EXPECT_EQ(FramesOf(folder, music + "/02 - Paper boats.mp3"), 40 * 44100);
    EXPECT_EQ(FramesOf(folder, music + "/Live at the Pier/Soundcheck.mp3"), 20 * 44100);
    EXPECT_EQ(FramesOf(folder, music + "/Live at the Pier/Harbour lights.mp3"), 20 * 44100);
    EXPECT_TRUE(NativeExists(music + "/Empty"));
}

TEST(Journey, TheProgramStartsAndKeepsThreeSettingsWhenItsWindowIsClosed) {
    // Waits for the main window, closes it as a user does, and waits for the program to end.
    const QByteArray script =
        "\"$0\" & program=$!; "
        "window=$(timeout 60 xdotool search --sync --onlyvisible --name '^Sonmira V2' | tail -1); "
        "xdotool windowactivate --sync \"$window\"; sleep 0.5; xdotool key ctrl+q; "
        "(sleep 20; kill -9 $program 2>/dev/null) & wait $program";
    const ToolResult closed = OnDisplay({"bash", "-c", script, Program("sonmira")});
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    LocateSettingsFile();
    const auto saved = [](const QString& key) {
        return ReadIniValue(SettingsFile, u"AudioConverter"_s, key);
    };
    EXPECT_EQ(saved(u"Format"_s), u"Mp3"_s);
    EXPECT_EQ(saved(u"Modepath"_s), u"FALSE"_s);
    EXPECT_FALSE(saved(u"OutputPath"_s).isEmpty());
}

}  // namespace
}  // namespace Sonmira
