#pragma once

class QAction;
class QMainWindow;
class QMenu;
class QMenuBar;

namespace Sonmira {

// The menu bar and the popup menus of the main window, under their design names and captions.
struct BatchMenus {
    explicit BatchMenus(QMainWindow& window);

    // Gives the entries letters by which they are reached. Again after their captions have changed.
    void AssignMnemonics();

    QMenuBar* Bar;
    QMenu* file;
    QAction* addfile;
    QAction* adddirectory;
    QAction* mynew;
    QAction* playfilemenu;  // playing a file is not offered: hidden, without action
    QAction* Quit;

    QMenu* ActionMenu;
    QAction* ConvertAll;
    QAction* ConvertSlection;
    QAction* cancel;

    QMenu* Options;
    QMenu* Languer;  // holds LangueName, one item a language file
    QAction* acceptWma;

    QMenu* Informations;
    QAction* aide;
    QAction* FAQ;
    QAction* Homepage;
    QAction* about;

    // On a node of the collection.
    QMenu* popupmenux;
    QAction* convertnoww;
    QAction* playfile;  // hidden, without action
    QAction* OpenDirectory;
    QAction* sepit;
    QAction* removefromlist;

    // On a row of the run.
    QMenu* popupmenuy;
    QAction* cancelonefile;
};

}  // namespace Sonmira
