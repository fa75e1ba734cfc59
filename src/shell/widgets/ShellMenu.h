#pragma once

class QAction;
class QWidget;

namespace Sonmira {

// The commands that the menus of every window have, under their design names.
struct ShellMenu {
    QAction* acceptWma;
    QAction* aide;
    QAction* FAQ;
    QAction* Homepage;
    QAction* about;
};

// Gives these commands their effects: WMA support from the next start on, the help, two web pages, and the
// version, with `window` as owner.
void ConnectShellMenu(QWidget& window, const ShellMenu& menu);

}  // namespace Sonmira
