#include "platform/Paths.h"
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

// Each begins as on the first day: without settings.
class Journey : public ::testing::Test {
protected:
    Journey() { qputenv("XDG_CONFIG_HOME", Settings.Native()); }

private:
    TestFolder Settings;
};

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

TEST_F(Journey, TheTourEndsWithConvertedFilesOfTheRightLength) {
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

// Starts the program on a display of its own and plays `script`, in which $program is its process, by the
// commands of `hands`; waits for its end.
ToolResult Play(const QByteArray& script, const QByteArray& program = Program("sonmira")) {
    const QByteArray frame = ". '" SONMIRA_HANDS "'; \"$0\" & program=$!; " + script + "; wait $program";
    return OnDisplay({"bash", "-c", frame, program});
}

// What closes the windows of a start.
const QByteArray Picker = "'^Sonmira - Language'";
const QByteArray Window = "'^Sonmira V2.1$'";
const QByteArray TakeTheMarkedLanguage = "press " + Picker + " Return shown " + Window + "; ";
const QByteArray ClosePicker = "press " + Picker + " alt+F4 shown ";
const QByteArray Quit = "press " + Window + " ctrl+q ended";

TEST_F(Journey, AFirstStartAsksForTheLanguageAndKeepsThreeSettingsAtTheClose) {
    const TestFolder folder;
    // Return takes the marked row, which is English.
    const ToolResult closed = Play(TakeTheMarkedLanguage +
                                   "file=$XDG_CONFIG_HOME/SonmiraPack/Sonmira.ini; wait_until grep -q "
                                   "WMASUPPORT=. \"$file\"; cp \"$file\" '" +
                                   folder.Native("before") + "'; " + Quit);
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    EXPECT_EQ(ContentOf(folder.Native("before")).replace("\r\n", "\n"),
              "[LANGUE]\nVALUE= 0\n[LAUNCH]\nVALUE=True\n[WMA]\nWMASUPPORT=False\n");
    const QByteArray after = SettingsContent();
    EXPECT_TRUE(after.contains("Format=Mp3\n")) << after.constData();
    EXPECT_TRUE(after.contains("Modepath=FALSE\n"));
    EXPECT_TRUE(after.contains("OutputPath="));
}

TEST_F(Journey, APickerThatIsClosedIsThereAgainAtTheNextStart) {
    for (int start = 1; start <= 2; ++start) {
        const ToolResult closed = Play(ClosePicker + Window + "; " + Quit);
        ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
        EXPECT_FALSE(SettingsContent().contains("LANGUE"));
    }
}

TEST_F(Journey, ASettingsFileEditedByHandSurvives) {
    LocateSettingsFile();
    const QByteArray edited =
        "; my settings\r\n[langue]\r\nvalue= 2\n\n[Mine]\nkept = \"as it is\" ; and this\r\nno key here\n"
        "[AUDIOCONVERTER]\nformat=Ogg\r\nOther=1\n";
    std::ofstream(ToNative(SettingsFile).toStdString(), std::ios::binary) << edited.toStdString();
    const ToolResult closed = Play(Quit);
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    const QByteArray after = ContentOf(ToNative(SettingsFile));
    EXPECT_TRUE(
        after.startsWith("; my settings\r\n[langue]\r\nvalue= 2\n\n[Mine]\nkept = \"as it is\" ; and this\r\n"
                         "no key here\n[AUDIOCONVERTER]\nformat=Ogg\r\nOther=1\n"))
        << after.constData();
    EXPECT_TRUE(after.contains("Modepath=FALSE"));
}

// A copy of the program with what belongs to it, in a tree of its own.
QByteArray CopyOfTheProgram(const TestFolder& folder) {
    folder.MakeFolder("bin");
    EXPECT_EQ(RunTool({"cp", "-r", Program("sonmira"), Program("Lang"), folder.Native("bin")}).ExitCode, 0);
    EXPECT_EQ(RunTool({"cp", "-r", Program("../lib"), folder.Native()}).ExitCode, 0);
    return folder.Native("bin/sonmira");
}

TEST_F(Journey, TheSettingsLieBesideTheProgramWhereTheirFolderIsMissing) {
    const TestFolder folder;
    const QByteArray program = CopyOfTheProgram(folder);
    qputenv("XDG_CONFIG_HOME", folder.Native("no such folder"));
    const ToolResult closed = Play(TakeTheMarkedLanguage + Quit, program);
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    EXPECT_TRUE(ContentOf(folder.Native("bin/Sonmira.ini")).contains("Format=Mp3"));
}

const QByteArray CloseNotice = "press '^Lame Encoder$' alt+F4 gone '^Lame Encoder$'; ";

// Other libraries of the program bring LAME's with them, so that only the encoder's own file can tell.
TEST_F(Journey, TheEncodersFileOpensTheGateAtTheNextStart) {
    const TestFolder folder;
    const QByteArray program = CopyOfTheProgram(folder);
    const QByteArray file = folder.Native("lib/sonmira/lame_enc.dll");
    const QByteArray encoder = ContentOf(file);
    const auto formatAfter = [&](const QByteArray& script) {
        std::filesystem::remove_all(qgetenv("XDG_CONFIG_HOME").toStdString() + "/SonmiraPack");
        const ToolResult closed = Play(script + TakeTheMarkedLanguage + Quit, program);
        EXPECT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
        const QByteArray settings = SettingsContent();
        return settings.mid(settings.indexOf("\nFormat=") + 8).split('\n').first();
    };
    EXPECT_EQ(formatAfter({}), "Mp3");
    std::filesystem::remove(file.toStdString());
    EXPECT_EQ(formatAfter(CloseNotice), "Wav") << "nothing there";
    folder.MakeFolder("lib/sonmira/lame_enc.dll");
    EXPECT_EQ(formatAfter(CloseNotice), "Wav") << "a folder of its name";
    std::filesystem::remove(file.toStdString());
    const QByteArray put = "cp '" + Program("../lib/sonmira/lame_enc.dll") + "' '" + file + "'; ";
    EXPECT_EQ(formatAfter("wait_for '^Lame Encoder$'; " + put + CloseNotice), "Mp3")
        << "put there while the notice stands, before the list is filled";
    EXPECT_EQ(formatAfter({}), "Mp3") << "no notice any more";
    folder.MakeFile("lib/sonmira/lame_enc.dll", "no library");
    EXPECT_EQ(formatAfter({}), "Mp3") << "a file is looked for, not into";
    folder.MakeFile("lib/sonmira/lame_enc.dll",
                    QByteArray(encoder).replace("libmp3lame.so.0", "libmp3lame.no.0"));
    EXPECT_EQ(formatAfter({}), "Mp3") << "its own library gone";
}

TEST_F(Journey, ADragFromAnotherProgramBringsInWhatTheDropTakes) {
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

TEST_F(Journey, TheCompactWindowAsksForTheLanguageAndEndsTheProgramAtItsClose) {
    const ToolResult closed = Play(TakeTheMarkedLanguage + Quit, Program("audiotool"));
    ASSERT_EQ(closed.ExitCode, 0) << closed.Errors.constData();
    const QByteArray settings = SettingsContent();
    EXPECT_TRUE(settings.contains("[Track]\nCOLOR= 16576\n")) << settings.constData();
    EXPECT_TRUE(settings.contains("[LANGUE]\nVALUE= 0\n"));
    EXPECT_TRUE(settings.contains("Format=Mp3\n"));
}

TEST_F(Journey, TheCompactWindowEndsWithAReportWhereItsLanguagePickerIsClosed) {
    const ToolResult closed =
        Play(ClosePicker + "'^Sonmira$'; press '^Sonmira$' Return ended", Program("audiotool"));
    EXPECT_EQ(closed.ExitCode, 1) << closed.Errors.constData();
    EXPECT_FALSE(SettingsContent().contains("LANGUE"));
}

TEST_F(Journey, FilesDraggedToTheCompactWindowAreConverted) {
    const TestFolder folder;
    LocateSettingsFile();
    std::ofstream(ToNative(SettingsFile).toStdString(), std::ios::binary)
        << "[LANGUE]\nVALUE= 0\n[AudioConverter]\nFormat=Ogg\nOutputPath="
        << folder.Native("out").toStdString() << '\n';
    folder.MakeFolder("out");
    const QByteArray tone = folder.Native("tone.wav");
    ASSERT_EQ(RunTool({"sox", "-n", "-r", "44100", "-c", "2", tone, "synth", "3", "sine", "440"}).ExitCode,
              0);
    // The window refuses to close before the file is done: it is asked again then.
    const QByteArray script =
        "said='" + folder.Native("said") + "' out='" + folder.Native("out/tone.ogg") + "'; '" +
        Program("drag-source") + "' '" + tone + "' >\"$said\" & source=$!; to=$(wait_for " + Window + "); " +
        "move $to 300 20; move $(wait_for '^drag-source$') 10 10; "
        "list() { place $to | awk '{print $1 + 250, $2 + 160}'; }; drag list \"$said\"; "
        "made() { [ -s \"$out\" ] && ! ls -l /proc/$program/fd | grep -qF \"$out\"; }; press " +
        Window + " ctrl+Return made; " + Quit + "; kill $source";
    const ToolResult closed = Play(script, Program("audiotool"));
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
                          ". '" SONMIRA_HANDS "'; QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 \"$0\" \"${@:2}\" & "
                          "program=$!; wait_for " +
                              Window + " >&2; \"$1\" Sonmira; status=$?; kill $program; exit $status",
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

TEST_F(Journey, EveryControlOfBothProgramsHasANameOnTheAccessibilityBus) {
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

TEST_F(Journey, NeitherProgramReadsItsCommandLine) {
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

TEST_F(Journey, TheHelpDocumentHoldsEveryPage) {
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
