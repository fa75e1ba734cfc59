#include "platform/Processes.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

bool Lists(qint64 id) {
    for (const RunningProcess& process : Processes().List()) {
        if (process.Id == id) return true;
    }
    return false;
}

TEST(Processes, TheOwnProcessStandsFirstUnderItsProgramsName) {
    const RunningProcess first = Processes().List().front();
    EXPECT_EQ(first.Id, getpid());
    EXPECT_EQ(first.Name, u"platform_tests"_s);
}

TEST(Processes, AnotherInstanceOfThisProgramIsListedAndAnyOtherProgramIsNot) {
    int hold[2];
    ASSERT_EQ(pipe(hold), 0);
    const auto waiting = [&](bool becomeAnother) {
        const pid_t child = fork();
        if (child == 0) {
            close(hold[1]);
            if (becomeAnother) {
                dup2(hold[0], STDIN_FILENO);
                execlp("cat", "cat", nullptr);
            }
            char byte = 0;
            const auto got = read(hold[0], &byte, 1);
            _exit(got == 0 ? 0 : 1);
        }
        return child;
    };
    const pid_t instance = waiting(false);
    const pid_t other = waiting(true);
    EXPECT_TRUE(Lists(instance));
    // The other one may not have become its program yet.
    EXPECT_TRUE(ComesTrue([&] { return !Lists(other); }));
    EXPECT_FALSE(Lists(1));
    close(hold[1]);
    for (const pid_t child : {instance, other}) waitpid(child, nullptr, 0);
}

TEST(Processes, EndingTheOwnProcessEndsItAtOnceWithSuccess) {
    EXPECT_EXIT(
        {
            std::atexit([] { _exit(1); });
            Processes().End(getpid());
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Processes, NobodyElsesProcessIsEverEnded) {
    const pid_t child = fork();
    if (child == 0) {
        pause();
        _exit(0);
    }
    EXPECT_FALSE(Processes().End(child));
    EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "still there";
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace Sonmira
