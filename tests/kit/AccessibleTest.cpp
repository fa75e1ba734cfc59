#include "SplitterTest.h"
#include "kit/CadreDesign.h"
#include "kit/MyProgressBar.h"

#include <QAccessible>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(KitAccessibility, TheProgressBarIsOneWithItsValue) {
    MyProgressBar bar;
    bar.setAccessibleName(u"Progress"_s);
    bar.SetValue(37);
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&bar);
    EXPECT_EQ(told->role(), QAccessible::ProgressBar);
    EXPECT_EQ(told->text(QAccessible::Name), u"Progress"_s);
    ASSERT_NE(told->valueInterface(), nullptr);
    EXPECT_EQ(told->valueInterface()->currentValue().toInt(), 37);
    EXPECT_EQ(told->valueInterface()->minimumValue().toInt(), 0);
    EXPECT_EQ(told->valueInterface()->maximumValue().toInt(), 100);
}

TEST(KitAccessibility, TheCardIsAGroup) {
    CadreDesign card;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&card)->role(), QAccessible::Grouping);
}

class AccessibleSplitter : public SplitterTest {};

TEST_F(AccessibleSplitter, TheBarIsASplitterWhoseValueIsItsPlace) {
    Control.SetSplitterPos(3000);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&Control)->role(), QAccessible::Grouping);
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(Bar());
    EXPECT_EQ(told->role(), QAccessible::Splitter);
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty());
    ASSERT_NE(told->valueInterface(), nullptr);
    EXPECT_EQ(told->valueInterface()->currentValue().toInt(), 200);
    EXPECT_EQ(told->valueInterface()->minimumValue().toInt(), 17);
    EXPECT_EQ(told->valueInterface()->maximumValue().toInt(), 578);
    told->valueInterface()->setCurrentValue(250);
    EXPECT_EQ(Control.SplitterPos(), 3750);
    EXPECT_TRUE(told->state().focusable);
}

}  // namespace
}  // namespace Sonmira
