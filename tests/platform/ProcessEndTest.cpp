#include "platform/Processes.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace Sonmira {
namespace {

TEST(ProcessEnd, EndsWithTheCodeAndRunsNothingElse) {
    EXPECT_EXIT(
        {
            std::atexit([] { _exit(1); });
            EndProcessNow(3);
        },
        ::testing::ExitedWithCode(3), "");
}

}  // namespace
}  // namespace Sonmira
