#pragma once

#include <QString>

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

// What stands in the title of a main window: the name and the version, "Sonmira V2.1".
QString ProgramTitle();

// Shows the logo and the version until the user closes it.
void ShowAbout(QWidget* owner);

}  // namespace Sonmira
