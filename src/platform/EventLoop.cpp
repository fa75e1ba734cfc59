#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QThread>

#include <chrono>
#include <vector>

namespace Sonmira {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto PaintInterval = std::chrono::milliseconds(15);

// What was held back: requests to lay out or to paint a window, each with the window.
std::vector<std::pair<QPointer<QObject>, QEvent::Type>> Waiting;
// Inside of a turn that paints.
bool PaintsNow = false;

// Who has asked does not ask again before his turn has come, so that no request may be lost.
void PostDeferred() {
    for (const auto& [window, type] : std::exchange(Waiting, {})) {
        if (window == nullptr) continue;
        QCoreApplication::postEvent(window, new QEvent(type), Qt::LowEventPriority);
    }
}

// For as long as it lives, holds back what leads to painting and lets all else through.
class DeferredPainting : public QObject {
public:
    DeferredPainting() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        // A click may have opened a dialog, which lives inside of this turn and is to be seen.
        if (PaintsNow || QThread::currentThread()->loopLevel() > Level) {
            PostDeferred();
            return false;
        }
        switch (event->type()) {
            case QEvent::UpdateRequest:
            case QEvent::LayoutRequest:
                Waiting.emplace_back(receiver, event->type());
                return true;
            case QEvent::Timer:
                // Lists and trees place their rows by a timer of no delay, which comes again by itself. With
                // each row or folder that is added all rows would be placed anew.
                return receiver->inherits("QAbstractItemView");
            default:
                return false;
        }
    }

private:
    const int Level = QThread::currentThread()->loopLevel();
};

}  // namespace

void YieldToEventLoop() {
    if (QCoreApplication::instance() == nullptr) return;
    static Clock::time_point lastPainting;
    const bool outer = std::exchange(PaintsNow, Clock::now() - lastPainting >= PaintInterval);
    if (PaintsNow) {
        PostDeferred();
        QCoreApplication::processEvents();
        lastPainting = Clock::now();
    } else {
        const DeferredPainting held;
        QCoreApplication::processEvents();
    }
    PaintsNow = outer;
    PostDeferred();
}

}  // namespace Sonmira
