#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace Sonmira {

// Waits for a modal window of that name, which blocks whoever shows it, and acts on it. The window must end
// by what `act` does. Ends its wait with its life.
class ModalAnswer {
public:
    ModalAnswer(QString name, std::function<void(QWidget& window)> act) {
        QObject::connect(&Poll, &QTimer::timeout, &Poll, [this, name, act] {
            QWidget* const window = QApplication::activeModalWidget();
            if (window == nullptr || window->objectName() != name) return;
            ++Count;
            act(*window);
        });
        Poll.start(5);
    }

    // How often the window was there.
    int Seen() const { return Count; }

private:
    QTimer Poll;
    int Count = 0;
};

}  // namespace Sonmira
