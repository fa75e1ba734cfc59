#pragma once

#include "support/Waiting.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QtTest/QTest>

#include <functional>

namespace Sonmira {

// Lets everything happen that waits for its turn, and what comes of it: events, layouts, paints and timers of
// no time. How long that takes does not matter.
inline void Settle() {
    // Whoever always has something to do next must not hold a test for ever.
    for (int rounds = 0; rounds < 200; ++rounds) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) return;
    }
}

// Whether the condition has come to hold, while events are handled.
inline bool Becomes(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, static_cast<int>(LongestWait.count()));
}

inline bool BecomesActive(QWidget& window) {
    return QTest::qWaitForWindowActive(&window, static_cast<int>(LongestWait.count()));
}

}  // namespace Sonmira
