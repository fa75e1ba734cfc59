#include "shell/widgets/WindowMeasures.h"

#include <QTreeWidget>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class SubItemRect : public ::testing::Test {
protected:
    SubItemRect() {
        List.setColumnCount(3);
        for (const QString& text : {u"a"_s, u"b"_s}) {
            List.addTopLevelItem(new QTreeWidgetItem(QStringList{text, text, text}));
        }
        List.resize(400, 200);
        for (int column = 0; column < 3; ++column) List.setColumnWidth(column, 100);
        List.show();
    }

    QTreeWidget List;
    QRect Rect{11, 12, 13, 14};
};

TEST_F(SubItemRect, IsTheRectangleOfTheCell) {
    ASSERT_TRUE(GetSubItemRect(&List, 1, 1, 0, Rect));
    const QRect row = List.visualItemRect(List.topLevelItem(1));
    EXPECT_EQ(Rect, QRect(100, row.top(), 100, row.height()));
    EXPECT_GT(Rect.top(), 0);
}

TEST_F(SubItemRect, KeepsTheQuestionWhereThereIsNoSuchCell) {
    for (const auto& [item, subItem] : {std::pair{2, 1}, std::pair{-1, 1}, std::pair{0, 3}}) {
        EXPECT_FALSE(GetSubItemRect(&List, item, subItem, 2, Rect));
        EXPECT_EQ(Rect.top(), subItem);
        EXPECT_EQ(Rect.left(), 2);
    }
}

TEST_F(SubItemRect, IsNothingWithoutAList) {
    EXPECT_FALSE(GetSubItemRect(nullptr, 0, 1, 2, Rect));
    EXPECT_EQ(Rect.topLeft(), QPoint(2, 1));
}

}  // namespace
}  // namespace Sonmira
