#include "platform/NativePath.h"
#include "shell/Settings.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <QSet>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

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
                                "5-converting", "6-converted", "7-tag"}) {
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

// The settings file, where the entry routine looks for it.
QByteArray SettingsContent() {
    LocateSettingsFile();
    return ContentOf(ToNative(SettingsFile)).replace("\r\n", "\n");
}

// Starts the program on a display of its own and plays `script`, in which $program is its process; waits for
// its end, and ends it after a while in any case. `wait_for NAME` prints the id of the window of that title.
ToolResult Play(const QByteArray& script, const QByteArray& program = Program("sonmira")) {
    const QByteArray frame =
        "wait_for() { timeout 60 xdotool search --sync --onlyvisible --name \"$1\" | tail -1; }; "
        // A window that is just coming up may not be the active one at the first try.
        "press() { for n in 1 2 3 4 5 6; do timeout 5 xdotool windowactivate --sync \"$1\" && "
        "[ \"$(xdotool getactivewindow)\" = \"$1\" ] && break; sleep 0.3; done; "
        "sleep 0.3; xdotool key \"$2\"; }; "
        "\"$0\" & program=$!; " +
        script + "; (sleep 20; kill -9 $program 2>/dev/null) & wait $program";
    return OnDisplay({"bash", "-c", frame, program});
}

TEST(Journey, AFirstStartAsksForTheLanguageAndKeepsThreeSettingsAtTheClose) {
    const TestFolder folder;
    // Return takes the marked row, which is English.
    const ToolResult closed = Play(
        "press \"$(wait_for '^Sonmira - Language')\" Return; "
        "window=$(wait_for '^Sonmira V2.1$'); sleep 0.3; "
        "cp \"$XDG_CONFIG_HOME/SonmiraPack/Sonmira.ini\" '" +
        folder.Native("before") + "'; press \"$window\" ctrl+q");
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    EXPECT_EQ(ContentOf(folder.Native("before")).replace("\r\n", "\n"),
              "[LANGUE]\nVALUE= 0\n[LAUNCH]\nVALUE=True\n[WMA]\nWMASUPPORT=False\n");
    const QByteArray after = SettingsContent();
    EXPECT_TRUE(after.contains("Format=Mp3\n")) << after.constData();
    EXPECT_TRUE(after.contains("Modepath=FALSE\n"));
    EXPECT_TRUE(after.contains("OutputPath="));
}

TEST(Journey, APickerThatIsClosedIsThereAgainAtTheNextStart) {
    for (int start = 1; start <= 2; ++start) {
        const ToolResult closed = Play(
            "press \"$(wait_for '^Sonmira - Language')\" alt+F4; "
            "press \"$(wait_for '^Sonmira V2.1$')\" ctrl+q");
        ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
        EXPECT_FALSE(SettingsContent().contains("LANGUE"));
    }
}

TEST(Journey, ASettingsFileEditedByHandSurvives) {
    LocateSettingsFile();
    const QByteArray edited =
        "; my settings\r\n[langue]\r\nvalue= 2\n\n[Mine]\nkept = \"as it is\" ; and this\r\nno key here\n"
        "[AUDIOCONVERTER]\nformat=Ogg\r\nOther=1\n";
    std::ofstream(ToNative(SettingsFile).toStdString(), std::ios::binary) << edited.toStdString();
    const ToolResult closed = Play("press \"$(wait_for '^Sonmira V2.1$')\" ctrl+q");
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    const QByteArray after = ContentOf(ToNative(SettingsFile));
    EXPECT_TRUE(
        after.startsWith("; my settings\r\n[langue]\r\nvalue= 2\n\n[Mine]\nkept = \"as it is\" ; and this\r\n"
                         "no key here\n[AUDIOCONVERTER]\nformat=Ogg\r\nOther=1\n"))
        << after.constData();
    EXPECT_TRUE(after.contains("Modepath=FALSE"));
}

TEST(Journey, TheSettingsLieBesideTheProgramWhereTheirFolderIsMissing) {
    const TestFolder folder;
    // A copy of the program, with its languages, in a folder of its own.
    const ToolResult copied = RunTool({"cp", "-r", Program("sonmira"), Program("Lang"), folder.Native()});
    ASSERT_EQ(copied.ExitCode, 0);
    qputenv("XDG_CONFIG_HOME", folder.Native("no such folder"));
    const ToolResult closed = Play(
        "press \"$(wait_for '^Sonmira - Language')\" Return; press \"$(wait_for '^Sonmira V2.1$')\" ctrl+q",
        folder.Native("sonmira"));
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    EXPECT_TRUE(ContentOf(folder.Native("Sonmira.ini")).contains("Format=Mp3"));
}

TEST(Journey, ADragFromAnotherProgramBringsInWhatTheDropTakes) {
    const TestFolder folder;
    folder.MakeFile("Folder/inside.mp3");
    QList<QByteArray> command{SONMIRA_DRAG_ACROSS, Program("drop-target"), Program("drag-source"),
                              folder.Native("said")};
    for (const char* name : {"p.mpc", "l.alac", "SONG.WAV", "note.txt", "q.m4a"}) {
        folder.MakeFile(name);
        command.append(folder.Native(name));
    }
    command.append(folder.Native("Folder"));
    const ToolResult dropped = OnDisplay(command);
    EXPECT_EQ(dropped.ExitCode, 0) << dropped.Errors.constData();
    const QByteArray said = ContentOf(folder.Native("said"));
    EXPECT_TRUE(
        said.endsWith("node My Conversion\nnode p.mpc\nnode l.alac\nnode SONG.WAV\nnode Folder\n"
                      "node inside.mp3\nfree 1\n"))
        << said.constData();
}

TEST(Journey, TheCompactWindowAsksForTheLanguageAndEndsTheProgramAtItsClose) {
    const ToolResult closed = Play(
        "press \"$(wait_for '^Sonmira - Language')\" Return; press \"$(wait_for '^Sonmira V2.1$')\" ctrl+q",
        Program("audiotool"));
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    const QByteArray settings = SettingsContent();
    EXPECT_TRUE(settings.contains("[Track]\nCOLOR= 16576\n")) << settings.constData();
    EXPECT_TRUE(settings.contains("[LANGUE]\nVALUE= 0\n"));
    EXPECT_TRUE(settings.contains("Format=Mp3\n"));
}

TEST(Journey, TheCompactWindowEndsWithAReportWhereItsLanguagePickerIsClosed) {
    const ToolResult closed =
        Play("press \"$(wait_for '^Sonmira - Language')\" alt+F4; press \"$(wait_for '^Sonmira$')\" Return",
             Program("audiotool"));
    EXPECT_EQ(closed.ExitCode, 1) << closed.Errors.constData();
    EXPECT_FALSE(SettingsContent().contains("LANGUE"));
}

TEST(Journey, FilesDraggedToTheCompactWindowAreConverted) {
    const TestFolder folder;
    LocateSettingsFile();
    std::ofstream(ToNative(SettingsFile).toStdString(), std::ios::binary)
        << "[LANGUE]\nVALUE= 0\n[AudioConverter]\nFormat=Ogg\nOutputPath="
        << folder.Native("out").toStdString() << '\n';
    folder.MakeFolder("out");
    const QByteArray tone = folder.Native("tone.wav");
    ASSERT_EQ(RunTool({"sox", "-n", "-r", "44100", "-c", "2", tone, "synth", "3", "sine", "440"}).ExitCode,
              0);
    const QByteArray drag =
        "'" + Program("drag-source") + "' '" + tone +
        "' & from=$(wait_for '^drag-source$'); to=$(wait_for '^Sonmira V2.1$'); "
        "xdotool windowmove --sync $to 300 20; xdotool windowmove --sync $from 10 10; sleep 0.5; "
        "place() { xwininfo -id $1 | awk '/Absolute upper-left X/ {x=$NF} /Absolute upper-left Y/ {y=$NF} "
        "END {print x + '$2', y + '$3'}'; }; "
        "xdotool windowactivate --sync $from; "
        "read -r fx fy < <(place $from 40 30); read -r tx ty < <(place $to 250 160); "
        "xdotool mousemove $fx $fy; sleep 0.2; xdotool mousedown 1; sleep 0.2; "
        "for n in 1 2 3 4 5 6 7 8; do xdotool mousemove $((fx + (tx - fx) * n / 8)) $((fy + (ty - fy) * n / "
        "8)); "
        "sleep 0.1; done; sleep 0.3; xdotool mouseup 1; sleep 1; press $to ctrl+Return; sleep 3; "
        "press $to ctrl+q; kill %2";
    const ToolResult closed = Play(drag, Program("audiotool"));
    EXPECT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    const ToolResult probe = RunTool({"ffprobe", "-v", "error", "-show_entries", "stream=codec_name,duration",
                                      "-of", "csv=p=0", folder.Native("out/tone.ogg")});
    EXPECT_EQ(probe.Output.trimmed(), "vorbis,3.000000") << probe.Errors.constData();
}

// What assistive tools hear of a program with its window on the screen: depth, role and name of each node.
QList<QList<QByteArray>> Heard(const char* program, const QList<QByteArray>& arguments = {}) {
    LocateSettingsFile();
    std::ofstream(ToNative(SettingsFile).toStdString(), std::ios::binary) << "[LANGUE]\nVALUE= 0\n";
    const ToolResult heard = OnDisplay(
        QList<QByteArray>{"dbus-run-session", "--", "bash", "-c",
                          "QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 \"$0\" \"${@:2}\" & program=$!; "
                          "timeout 60 xdotool search --sync --onlyvisible --name '^Sonmira V2.1$' >&2; "
                          "\"$1\" Sonmira; status=$?; kill $program; exit $status",
                          Program(program), Program("accessible-walk")} +
        arguments);
    EXPECT_EQ(heard.ExitCode, 0) << heard.Errors.constData();
    QList<QList<QByteArray>> nodes;
    for (const QByteArray& line : heard.Output.split('\n')) {
        // The bus has its say between the lines.
        if (line.count('\t') == 2) nodes.append(line.split('\t'));
    }
    return nodes;
}

TEST(Journey, EveryControlOfBothProgramsHasANameOnTheAccessibilityBus) {
    const QList<QByteArray> needless = {"application", "frame",    "panel",      "filler",    "label",
                                        "list",        "menu bar", "popup menu", "separator", "status bar"};
    for (const char* program : {"sonmira", "audiotool"}) {
        const auto nodes = Heard(program);
        QSet<QByteArray> roles;
        for (const auto& node : nodes) {
            roles.insert(node[1]);
            EXPECT_TRUE(needless.contains(node[1]) || !node[2].isEmpty())
                << program << ": " << node[1].constData() << " at depth " << node[0].constData();
        }
        EXPECT_GT(nodes.size(), 80) << program;
        for (const char* role : {"frame", "menu item", "push button", "check box", "text", "combo box",
                                 "list item", "table", "column header"}) {
            EXPECT_TRUE(roles.contains(role)) << program << ": " << role;
        }
        if (program != QByteArrayView("sonmira")) continue;
        for (const char* role :
             {"tree", "splitter", "progress bar", "page tab", "radio button", "tool bar"}) {
            EXPECT_TRUE(roles.contains(role)) << role;
        }
    }
}

TEST(Journey, NeitherProgramReadsItsCommandLine) {
    const TestFolder folder;
    folder.MakeFolder("album");
    const QByteArray song = folder.Native("album/song.wav");
    ASSERT_EQ(RunTool({"sox", "-n", "-r", "44100", "-c", "2", song, "synth", "1", "sine", "440"}).ExitCode,
              0);
    for (const char* program : {"sonmira", "audiotool"}) {
        const auto nodes = Heard(program, {song, folder.Native("album"), "--help"});
        EXPECT_GT(nodes.size(), 80) << program;
        for (const auto& node : nodes) {
            EXPECT_FALSE(node[2].contains("song") || node[2].contains("album"))
                << program << ": " << node[2].constData();
        }
    }
}

TEST(Journey, TheHelpDocumentHoldsEveryPage) {
    const TestFolder folder;
    const ToolResult extracted = RunTool({"extract_chmLib", Program("Sonmira.chm"), folder.Native("pages")});
    ASSERT_EQ(extracted.ExitCode, 0) << extracted.Errors.constData();
    int pages = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(SONMIRA_HELP)) {
        const std::string ending = file.path().extension().string();
        if (ending != ".html" && ending != ".css" && ending != ".png") continue;
        const auto name = std::filesystem::relative(file.path(), SONMIRA_HELP).string();
        EXPECT_EQ(ContentOf(folder.Native("pages/" + QByteArray::fromStdString(name))),
                  ContentOf(QByteArray::fromStdString(file.path().string())))
            << name;
        ++pages;
    }
    EXPECT_GE(pages, 15);
}

}  // namespace
}  // namespace Sonmira
