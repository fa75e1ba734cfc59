#pragma once

#include "kit/Splitter.h"
#include "kit/Twips.h"

#include <QTest>

#include <gtest/gtest.h>

namespace Sonmira {

// A splitter of 600 by 400 pixels (9000 by 6000 twips) with two children in a window that is shown.
class SplitterTest : public ::testing::Test {
protected:
    static constexpr int Length = 9000;
    static constexpr int Across = 6000;

    SplitterTest() {
        Window.resize(1200, 1000);
        Control.setGeometry(40, 30, 600, 400);
        First.setObjectName(QStringLiteral("Before"));
        Second.setObjectName(QStringLiteral("After"));
        Control.SetChild1(QStringLiteral("Before"));
        Control.SetChild2(QStringLiteral("After"));
        Window.show();
        Window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
        QObject::connect(&Control, &Splitter::Resize, [this] { ++Layouts; });
        Layouts = 0;
    }

    QWidget* Bar() { return Control.findChild<QWidget*>(QStringLiteral("picSplitter")); }
    // Its size in pixels along both axes.
    void ResizeTo(int width, int height) { Control.resize(width, height); }

    QWidget Window;
    Splitter Control{&Window};
    QWidget First{&Control};
    QWidget Second{&Control};
    int Layouts = 0;
};

}  // namespace Sonmira
