#include "platform/Failure.h"
#include "platform/Processes.h"
#include "shell/ForcedEnd.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ForcedEnd : public ::testing::Test {
protected:
    ForcedEnd() {
        Processes().List = [this] { return Running; };
        Processes().End = [this](qint64 id) {
            Ended.push_back(id);
            return id != Unwilling;
        };
    }
    ~ForcedEnd() override { Processes() = Real; }

    void HaveOthers(int count) {
        for (int n = 0; n < count; ++n) Running.push_back({u"other"_s, 1000 + n});
    }

    static constexpr qint64 Unwilling = 13;
    const ProcessFunctions Real = Processes();
    std::vector<RunningProcess> Running;
    std::vector<qint64> Ended;
};

TEST_F(ForcedEnd, EndsTheFirstProcessWhoseNameContainsTheTextInAnyCase) {
    Running = {{u"editor"_s, 1}, {u"my-SonMira.exe"_s, 2}, {u"sonmira"_s, 3}};
    EXPECT_EQ(KillProcessByName(u"Sonmira"_s), QString());
    EXPECT_EQ(Ended, std::vector<qint64>{2});
}

TEST_F(ForcedEnd, EndsTheEarlierOfTwoInstancesOnly) {
    Running = {{u"sonmira"_s, 7}, {u"sonmira"_s, 5}};
    KillProcessByName(u"sonmira"_s);
    EXPECT_EQ(Ended, std::vector<qint64>{7});
}

TEST_F(ForcedEnd, EndsNobodyWhereNoNameMatches) {
    Running = {{u"editor"_s, 1}};
    EXPECT_EQ(KillProcessByName(u"sonmira"_s), QString());
    EXPECT_TRUE(Ended.empty());
}

TEST_F(ForcedEnd, HasRoomForAHundredProcesses) {
    HaveOthers(99);
    Running.push_back({u"sonmira"_s, 5});
    KillProcessByName(u"sonmira"_s);
    EXPECT_EQ(Ended, std::vector<qint64>{5});
}

TEST_F(ForcedEnd, FailsAtTheHundredAndFirstProcessEvenWhereTheFirstOneMatches) {
    Running = {{u"sonmira"_s, 5}};
    HaveOthers(100);
    try {
        KillProcessByName(u"sonmira"_s);
        ADD_FAILURE();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::SubscriptOutOfRange);
    }
    EXPECT_TRUE(Ended.empty());
}

TEST_F(ForcedEnd, TellsWhetherTheProcessEnded) {
    EXPECT_TRUE(KillProcessById(5));
    EXPECT_FALSE(KillProcessById(Unwilling));
    EXPECT_FALSE(KillProcessById(0));
    EXPECT_EQ(Ended, (std::vector<qint64>{5, Unwilling})) << "nobody is asked to end process 0";
}

TEST_F(ForcedEnd, PassesAFailureOver) {
    Processes().End = [](qint64 /*id*/) -> bool { throw Failure(FailureNumber::PermissionDenied); };
    EXPECT_FALSE(KillProcessById(5));
}

}  // namespace
}  // namespace Sonmira
