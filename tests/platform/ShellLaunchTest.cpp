#include "platform/ChildProcess.h"
#include "support/TestFolder.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// A desktop whose opener writes down what it was given.
class ShellLaunch : public ::testing::Test {
protected:
    ShellLaunch() { setenv("PATH", Folder.Native("bin").constData(), 1); }

    void HaveOpener(const QByteArray& name, const QByteArray& body) {
        Folder.MakeFile("bin/" + name, "#!/bin/sh\n" + body);
        chmod(Folder.Native("bin/" + name).constData(), 0755);
    }
    // What the opener wrote, as soon as it has.
    QByteArray Written() const {
        EXPECT_TRUE(ComesTrue([this] { return NativeExists(Folder.Native("done")); }));
        return ContentOf(Folder.Native("opened"));
    }
    QByteArray Recording() const {
        return "pwd > '" + Folder.Native("opened") + "'; for a; do echo \"$a\" >> '" +
               Folder.Native("opened") + "'; done; : > '" + Folder.Native("done") + "'\n";
    }

    TestFolder Folder;
};

TEST_F(ShellLaunch, HandsAPathOverInTheSystemsFormWithItsFolder) {
    HaveOpener("xdg-open", Recording());
    const QString target = Folder.MakeFile("caf\xE9 song.wav");
    EXPECT_TRUE(LaunchWithDesktop(target, Folder.Path()));
    EXPECT_EQ(Written(), Folder.Native() + '\n' + Folder.Native("caf\xE9 song.wav") + '\n');
}

TEST_F(ShellLaunch, HandsAWebAddressOverAsItStands) {
    HaveOpener("xdg-open", Recording());
    EXPECT_TRUE(LaunchWithDesktop(u"https://example.org/a.php?d=1&s=2"_s, Folder.Path()));
    EXPECT_EQ(Written(), Folder.Native() + "\nhttps://example.org/a.php?d=1&s=2\n");
}

TEST_F(ShellLaunch, TakesTheDesktopsSecondOpenerWhereTheFirstIsMissing) {
    HaveOpener("gio", Recording());
    EXPECT_TRUE(LaunchWithDesktop(u"https://example.org/"_s, Folder.Path()));
    EXPECT_EQ(Written(), Folder.Native() + "\nopen\nhttps://example.org/\n");
}

TEST_F(ShellLaunch, AFileInPlaceOfTheFolderKeepsNothingFromBeingOpened) {
    HaveOpener("xdg-open", Recording());
    const QString target = Folder.MakeFile("song.wav");
    EXPECT_TRUE(LaunchWithDesktop(target, target));
    EXPECT_TRUE(Written().endsWith('\n' + Folder.Native("song.wav") + '\n'));
}

TEST_F(ShellLaunch, IsSilentWhereNothingTakesTheTarget) {
    // What a failing opener says is for nobody.
    HaveOpener("xdg-open", "echo loud; echo louder >&2\n" + Recording() + "exit 4\n");
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    LaunchWithDesktop(Folder.Path("none.txt"), Folder.Path());
    Written();
    EXPECT_FALSE(LaunchWithDesktop(QString(), QString()));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST_F(ShellLaunch, NeverWaitsForTheOpener) {
    // It comes to its end only after the launch, or so late that nobody takes it for a quick one.
    HaveOpener("xdg-open", "for tenth in $(/usr/bin/seq 5000); do [ -e '" + Folder.Native("go on") +
                               "' ] && break; /bin/sleep 0.1; done\n" + Recording());
    LaunchWithDesktop(Folder.Path("x"), Folder.Path());
    EXPECT_FALSE(NativeExists(Folder.Native("done")));
    Folder.MakeFile("go on");
    Written();
}

}  // namespace
}  // namespace Sonmira
