#pragma once

#include <QWidget>

namespace Sonmira {

// The logo window. It stands from the first moment of the start until the main window has its settings.
class Deb : public QWidget {
    Q_OBJECT

public:
    Deb();

    // The one logo window of the start, made when it is first asked for; Unload ends it, or does nothing
    // where there is none.
    static Deb& Instance();
    static void Unload();
};

}  // namespace Sonmira
