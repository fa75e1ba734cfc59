#include "platform/Failure.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/LanguageMenu.h"
#include "support/TestFolder.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class LanguageMenus : public ::testing::Test {
protected:
    LanguageMenus() { OverrideLanguageFolder(Folder.Path()); }
    ~LanguageMenus() override { OverrideLanguageFolder({}); }

    TestFolder Folder;
    QMenu Menu;
    LanguageMenu Languages{Menu};
};

TEST_F(LanguageMenus, KeepTheDesignedItemWhereThereIsNoFile) {
    Languages.FillLanguageMenu();
    EXPECT_EQ(Languages.HighestIndex(), 0);
    EXPECT_EQ(Languages.Item(0)->text(), u"Option1"_s);
    EXPECT_EQ(Languages.PathOf(0), QString());
}

TEST_F(LanguageMenus, GiveEachFileAnItemTheFirstOneTheDesignedOne) {
    for (const char* name : {"English.lng", "French.lng", "Klinglng"}) Folder.MakeFile(name);
    Languages.FillLanguageMenu();
    EXPECT_EQ(Languages.HighestIndex(), 2);
    EXPECT_EQ(Menu.actions().size(), 3);
    EXPECT_EQ(Languages.Item(0)->text(), u"English"_s);
    EXPECT_EQ(Languages.PathOf(1), Folder.Path("French.lng"));
    EXPECT_EQ(Languages.Item(2)->text(), u"Klin"_s);
}

TEST_F(LanguageMenus, ShowAnAmpersandAsOne) {
    Folder.MakeFile("A & B.lng");
    Languages.FillLanguageMenu();
    EXPECT_EQ(Languages.Item(0)->text(), u"A && B"_s);
}

TEST_F(LanguageMenus, CheckOneItemOnly) {
    for (const char* name : {"a.lng", "b.lng", "c.lng"}) Folder.MakeFile(name);
    Languages.FillLanguageMenu();
    for (int index = 0; index <= 2; ++index) Languages.Item(index)->setChecked(true);
    Languages.UncheckAllBut(1);
    EXPECT_FALSE(Languages.Item(0)->isChecked());
    EXPECT_TRUE(Languages.Item(1)->isChecked());
    EXPECT_FALSE(Languages.Item(2)->isChecked());
}

TEST_F(LanguageMenus, TellWhichItemWasClicked) {
    for (const char* name : {"a.lng", "b.lng"}) Folder.MakeFile(name);
    Languages.FillLanguageMenu();
    int clicked = -1;
    QObject::connect(&Languages, &LanguageMenu::LangueNameClick, [&](int index) { clicked = index; });
    Languages.Item(1)->trigger();
    EXPECT_EQ(clicked, 1);
}

TEST_F(LanguageMenus, AnItemThatIsNotThereFails) {
    EXPECT_THROW(Languages.Item(1), Failure);
    EXPECT_THROW(Languages.PathOf(-1), Failure);
}

}  // namespace
}  // namespace Sonmira
