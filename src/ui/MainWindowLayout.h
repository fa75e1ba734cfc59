#pragma once

#include "kit/Placing.h"

#include <QObject>

class QMainWindow;

namespace Sonmira {

struct BatchConverterForm;

// The least size of the window in twips: that of its design, which grows with the letters as far as the
// screen goes.
QSizeF LeastSizeOf(const QWidget& window);

// How the areas of the main window follow its size. Two kinds of measures: the design places, which hold
// until captions or letters change, and the rules, which are applied at each change of a size in their
// order, each reading what the earlier ones made. All of it in twips.
class MainWindowLayout : public QObject {
    Q_OBJECT

public:
    // Both outlive the layout. Takes the window over from here on.
    MainWindowLayout(QMainWindow& window, BatchConverterForm& form);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PlaceWindow();
    void PlacePicture1();
    void PlacePicture5();
    void PlacePicture7();
    void PlaceAll();

    void WindowResized();
    void SplitterResized();
    void FollowSplitter(const std::function<void(const std::function<void()>&)>& rule);
    void Picture1Resized();
    void Picture5Resized();
    void Picture7Resized();
    void Picture9Resized();

    QMainWindow& Window;
    BatchConverterForm& Form;
    Placing InWindow;
    Placing InSplitter;
    Placing In1;
    Placing In5;
    Placing In7;
};

}  // namespace Sonmira
