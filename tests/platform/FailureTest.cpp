#include "platform/Failure.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

TEST(Failure, CarriesTheClassicTextOfItsNumber) {
    EXPECT_EQ(Failure(FailureNumber::DivisionByZero).Description, QStringLiteral("Division by zero"));
    EXPECT_EQ(Failure(4711).Description, QStringLiteral("Application-defined error"));
}

TEST(Failure, IsPassedOverStatementByStatement) {
    int reached = 0;
    EXPECT_FALSE(PassOver([] { throw Failure(FailureNumber::TypeMismatch); }));
    EXPECT_TRUE(PassOver([&] { reached = 1; }));
    EXPECT_EQ(reached, 1);
}

TEST(Failure, A16BitNumberOverflowsInsteadOfWrapping) {
    EXPECT_EQ(Checked16(32767), 32767);
    EXPECT_EQ(Checked16(-32768), -32768);
    EXPECT_THROW(Checked16(32768), Failure);
    EXPECT_THROW(Checked16(-32769), Failure);
}

}  // namespace
}  // namespace Sonmira
