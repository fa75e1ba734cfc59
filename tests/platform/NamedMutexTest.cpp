#include "platform/Processes.h"
#include "support/TestFolder.h"

#include <QString>

#include <gtest/gtest.h>
#include <unistd.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

bool IsHeld(const QByteArray& name) {
    return ContentOf("/proc/net/unix").contains(" @" + name + '\n');
}

TEST(NamedMutex, IsHeldUntilTheProcessEnds) {
    const QString name = u"Sonmira_Test\\%1"_s.arg(getpid());
    EXPECT_FALSE(IsHeld(name.toUtf8()));
    CreateNamedMutex(name);
    EXPECT_TRUE(IsHeld(name.toUtf8()));
}

TEST(NamedMutex, ANameThatIsTakenIsPassedOverWithoutWaiting) {
    const QString name = u"Sonmira_Taken_%1"_s.arg(getpid());
    CreateNamedMutex(name);
    CreateNamedMutex(name);
    EXPECT_EQ(ContentOf("/proc/net/unix").count(" @" + name.toUtf8() + '\n'), 1);
}

}  // namespace
}  // namespace Sonmira
