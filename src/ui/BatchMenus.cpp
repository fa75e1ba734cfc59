#include "ui/BatchMenus.h"

#include "kit/Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QMenu* Menu(QMenu* menu, const QString& name) {
    menu->setObjectName(name);
    return menu;
}

QAction* Command(QMenu* menu, const QString& name, const QString& caption, QStringView icon = {}) {
    QAction* const action = menu->addAction(caption);
    action->setObjectName(name);
    if (!icon.isEmpty()) action->setIcon(OwnIcon(icon));
    return action;
}

}  // namespace

BatchMenus::BatchMenus(QMainWindow& window) {
    const auto top = [&](const QString& name, const QString& caption) {
        return Menu(window.menuBar()->addMenu(caption), name);
    };
    file = top(u"file"_s, u"File"_s);
    addfile = Command(file, u"addfile"_s, u"Add a file"_s, u"add-file");
    adddirectory = Command(file, u"adddirectory"_s, u"Add a directory"_s, u"add-directory");
    mynew = Command(file, u"mynew"_s, u"new"_s, u"new");
    playfilemenu = Command(file, u"playfilemenu"_s, u"Play this file"_s);
    file->addSeparator();
    Quit = Command(file, u"Quit"_s, u"Close"_s);

    ActionMenu = top(u"ActionMenu"_s, u"Action"_s);
    ConvertAll = Command(ActionMenu, u"ConvertAll"_s, u"Convert All"_s, u"convert");
    ConvertSlection = Command(ActionMenu, u"ConvertSlection"_s, u"Convert Selection"_s);
    cancel = Command(ActionMenu, u"cancel"_s, u"Cancel"_s, u"cancel");

    Options = top(u"Options"_s, u"Option"_s);
    Languer = Menu(Options->addMenu(u"Language"_s), u"Languer"_s);
    acceptWma = Command(Options, u"acceptWma"_s, u"acceptWma"_s);
    acceptWma->setCheckable(true);

    Informations = top(u"Informations"_s, u"Information"_s);
    aide = Command(Informations, u"aide"_s, u"Help"_s);
    FAQ = Command(Informations, u"FAQ"_s, u"FAQ"_s);
    Homepage = Command(Informations, u"Homepage"_s, u"Homepage"_s);
    about = Command(Informations, u"about"_s, u"About"_s, u"information");

    popupmenux = Menu(new QMenu(&window), u"popupmenux"_s);
    convertnoww = Command(popupmenux, u"convertnoww"_s, u"Convert !"_s, u"convert");
    playfile = Command(popupmenux, u"playfile"_s, u"Play file"_s);
    OpenDirectory = Command(popupmenux, u"OpenDirectory"_s, u"Open Directory"_s);
    sepit = popupmenux->addSeparator();
    sepit->setObjectName(u"sepit"_s);
    removefromlist = Command(popupmenux, u"removefromlist"_s, u"Remove from list"_s);

    popupmenuy = Menu(new QMenu(&window), u"popupmenuy"_s);
    cancelonefile = Command(popupmenuy, u"cancelonefile"_s, u"Cancel conversion"_s);

    for (QAction* const action : {playfilemenu, playfile}) action->setVisible(false);
    addfile->setShortcut(QKeySequence::Open);
    Quit->setShortcut(QKeySequence::Quit);
    aide->setShortcut(QKeySequence::HelpContents);
}

}  // namespace Sonmira
