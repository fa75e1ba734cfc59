#include "platform/Dialogs.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(Dialogs, WithoutWindowsAMessageGoesToStandardError) {
    ::testing::internal::CaptureStderr();
    Dialogs().ShowMessage(u"caf\u00e9"_s, MessageIcon::Critical, u"Sonmira"_s);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Sonmira: caf\xC3\xA9\n");
}

TEST(Dialogs, WithoutWindowsAQuestionIsCancelled) {
    EXPECT_FALSE(Dialogs().OpenFiles({}).has_value());
    EXPECT_EQ(Dialogs().BrowseForFolder(u"t"_s), QString());
}

}  // namespace
}  // namespace Sonmira
