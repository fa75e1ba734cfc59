#include "RealEngine.h"
#include "engine/StopCommands.h"
#include "support/Tool.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// The child processes of this one; an ended one that nobody has waited for is among them.
std::vector<pid_t> Children() {
    std::vector<pid_t> children;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(entry.path() / "stat");
        std::string line;
        if (!std::getline(file, line) || line.rfind(')') == std::string::npos) continue;
        int parent = 0;
        char state = 0;
        std::istringstream(line.substr(line.rfind(')') + 1)) >> state >> parent;
        if (parent == getpid()) children.push_back(std::atoi(line.c_str()));
    }
    return children;
}

// What becomes of a run when the program that encodes Musepack does not do its work.
class EncoderProcess : public RealEngine {
protected:
    EncoderProcess() {
        TakeFile(Folder.MakeFile("song.wav", WavOf(MakeSweep(44100, 2, 60L * 44100), WavKind::Signed16)));
    }

    // Acts once, in the middle of the encoding.
    void InTheMiddle(const std::function<void()>& act) {
        Host.AtYield = [this, act] {
            if (Acted) {
                if (Later) Later();
            } else if (Host.Progress >= 5) {
                Acted = true;
                act();
            }
        };
    }

    // As nobody reads the encoder's result, a failed one looks like one that worked.
    void ExpectConverted() {
        Convert(FormatName::Mpc);
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_EQ(Row().Icon, ConvertedIcon);
        EXPECT_TRUE(Host.ControlsEnabled);
        EXPECT_FALSE(Run.Busy());
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
        EXPECT_EQ(errno, ECHILD);
    }

    bool Acted = false;
    std::function<void()> Later;  // at each yield after that
};

TEST_F(EncoderProcess, ThatIsNotInstalledLeavesAConvertedRowAndNoOutput) {
    const QByteArray usual = qgetenv("PATH");
    qputenv("PATH", Folder.Native("nothing"));
    ExpectConverted();
    qputenv("PATH", usual);
    EXPECT_EQ(Row().Progress, u"0 %"_s);
    EXPECT_FALSE(NativeExists(Folder.Native("out/song.mpc")));
}

TEST_F(EncoderProcess, ThatIsKilledFromOutsideEndsTheFileAtOnce) {
    InTheMiddle([] {
        for (const pid_t child : Children()) kill(child, SIGKILL);
    });
    ExpectConverted();
    EXPECT_TRUE(Acted);
    EXPECT_NE(Row().Progress, u"100 %"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("out/song.mpc"))) << "what it wrote stays";
}

TEST_F(EncoderProcess, ThatHangsIsEndedByAStop) {
    int yields = 0;
    InTheMiddle([&] {
        for (const pid_t child : Children()) kill(child, SIGSTOP);
        Later = [&] {
            if (++yields == 5) CancelByMenu(Run, Items, Codecs.Parts());
        };
    });
    ExpectConverted();
    EXPECT_GE(yields, 5) << "a program that takes nothing keeps the window alive all the same";
    EXPECT_LT(yields, 10) << "heard at once";
}

// Files of this process and its children end at this size, as on a disk that is full.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : Signal(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &Usual);
        rlimit small = Usual;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &Usual);
        signal(SIGXFSZ, Signal);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit Usual = {};
    void (*Signal)(int);
};

TEST_F(EncoderProcess, OnAFullDiskLeavesAConvertedRow) {
    const SmallDisk disk(100'000);
    ExpectConverted();
}

TEST_F(EncoderProcess, OfTheOtherFormatsFailsOnAFullDiskWhereItsResultIsRead) {
    for (const OutputFormat& format : OutputFormats) {
        const SmallDisk disk(20'000);
        Convert(format.Name);
        EXPECT_EQ(Row().Icon, format.FromWav ? ConvertedIcon : ErrorIcon) << format.Ending;
        EXPECT_EQ(Row().Progress == u"line 96", !format.FromWav) << Row().Progress.toStdString();
        EXPECT_TRUE(Host.ControlsEnabled);
    }
}

}  // namespace
}  // namespace Sonmira
