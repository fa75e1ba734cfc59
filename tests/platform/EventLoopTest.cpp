#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace Sonmira {
namespace {

constexpr int PaintIntervalMs = 15;

// Stands for a window: counts what it is asked to do, and can be told what a click does. As windows do, it
// asks for painting once until that has come.
struct Watcher : QObject {
    int Painted = 0;
    int Clicked = 0;
    std::function<void()> AtClick;

    void AskForPainting() { Ask(QEvent::UpdateRequest); }
    void AskForLayout() { Ask(QEvent::LayoutRequest); }
    void LetClickWait() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

    bool event(QEvent* event) override {
        switch (event->type()) {
            case QEvent::UpdateRequest:
            case QEvent::LayoutRequest:
                ++Painted;
                HasAsked = false;
                return true;
            case QEvent::User:
                ++Clicked;
                if (AtClick) AtClick();
                return true;
            default:
                return QObject::event(event);
        }
    }

private:
    void Ask(QEvent::Type type) {
        if (!std::exchange(HasAsked, true)) QCoreApplication::postEvent(this, new QEvent(type));
    }
    bool HasAsked = false;
};

// Since this turn may have painted, the one after it does not, unless the machine is slow.
void LeaveNoTurnForPainting() {
    YieldToEventLoop();
}

void WaitForATurnForPainting() {
    std::this_thread::sleep_for(std::chrono::milliseconds(PaintIntervalMs + 1));
}

TEST(EventLoop, HandlesAtEachTurnWhatWaits) {
    Watcher window;
    for (int turn = 1; turn <= 1000; ++turn) {
        window.LetClickWait();
        YieldToEventLoop();
        ASSERT_EQ(window.Clicked, turn);
    }
}

TEST(EventLoop, HandlesAtEachTurnATimerThatIsDue) {
    int handled = 0;
    QTimer timer;
    timer.callOnTimeout([&] { ++handled; });
    timer.start(0);
    for (int turn = 1; turn <= 1000; ++turn) {
        YieldToEventLoop();
        ASSERT_EQ(handled, turn);
    }
}

TEST(EventLoop, PaintsNoMoreThanSixtyTimesASecondHoweverManyTurnsThereAre) {
    for (const auto ask : {&Watcher::AskForPainting, &Watcher::AskForLayout}) {
        Watcher window;
        QElapsedTimer whole;
        whole.start();
        for (int turn = 0; turn < 5000; ++turn) {
            (window.*ask)();
            YieldToEventLoop();
        }
        EXPECT_LE(window.Painted, whole.elapsed() / PaintIntervalMs + 1);
    }
}

TEST(EventLoop, PaintsInTheEndWhatHadToWait) {
    Watcher window;
    LeaveNoTurnForPainting();
    window.AskForPainting();
    for (int turn = 0; turn < 10; ++turn) YieldToEventLoop();
    WaitForATurnForPainting();
    YieldToEventLoop();
    EXPECT_EQ(window.Painted, 1);
}

TEST(EventLoop, PaintsWhatHadToWaitOnceTheWorkIsDone) {
    Watcher window;
    LeaveNoTurnForPainting();
    window.AskForPainting();
    YieldToEventLoop();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.Painted, 1);
}

TEST(EventLoop, PaintsWhileADialogIsOpenThatAClickHasOpened) {
    Watcher window;
    Watcher dialog;
    window.AtClick = [&] {
        QEventLoop open;
        QTimer look;
        look.callOnTimeout([&] {
            if (window.Painted > 0 && dialog.Painted > 0) open.quit();
        });
        look.start(0);
        QTimer::singleShot(std::chrono::seconds(20), &open, &QEventLoop::quit);
        dialog.AskForPainting();
        open.exec();
        EXPECT_EQ(window.Painted, 1);
        EXPECT_EQ(dialog.Painted, 1);
    };
    LeaveNoTurnForPainting();
    window.AskForPainting();
    window.LetClickWait();
    YieldToEventLoop();
    EXPECT_EQ(window.Clicked, 1);
}

TEST(EventLoop, PaintsInATurnInsideAnotherWhereItsTimeHasCome) {
    Watcher window;
    window.AtClick = [&] {
        WaitForATurnForPainting();
        YieldToEventLoop();
        EXPECT_EQ(window.Painted, 1);
    };
    LeaveNoTurnForPainting();
    window.AskForPainting();
    window.LetClickWait();
    YieldToEventLoop();
    EXPECT_EQ(window.Clicked, 1);
}

TEST(EventLoop, ForgetsWhoWentBeforeItsTurnForPaintingCame) {
    auto gone = std::make_unique<Watcher>();
    Watcher window;
    window.AtClick = [&] { gone.reset(); };
    LeaveNoTurnForPainting();
    gone->AskForPainting();
    window.LetClickWait();
    YieldToEventLoop();
    EXPECT_EQ(gone, nullptr);
    QCoreApplication::processEvents();
}

}  // namespace
}  // namespace Sonmira
