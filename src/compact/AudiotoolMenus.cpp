#include "compact/AudiotoolMenus.h"

#include "compact/AudiotoolForm.h"
#include "formats/OutputPanel.h"
#include "shell/widgets/LanguageMenu.h"

#include <QAction>
#include <QCheckBox>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QMenu* Named(QMenu* menu, const QString& name) {
    menu->setObjectName(name);
    return menu;
}

QAction* Command(QMenu* menu, const QString& name, const QString& caption, const QKeySequence& keys = {}) {
    QAction* const action = menu->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(keys);
    return action;
}

}  // namespace

AudiotoolMenus::AudiotoolMenus(QMainWindow& window) {
    const auto top = [&](const QString& name, const QString& caption) {
        return Named(window.menuBar()->addMenu(caption), name);
    };
    Fichier = top(u"Fichier"_s, u"File"_s);
    addfile = Command(Fichier, u"addfile"_s, u"Add a file"_s, QKeySequence::Open);
    convertmenu = Command(Fichier, u"convertmenu"_s, u"Convert !"_s, Qt::CTRL | Qt::Key_Return);
    MenuDeletefiles = Command(Fichier, u"MenuDeletefiles"_s, u"Delete all items"_s, QKeySequence::New);
    Fichier->addSeparator();
    Exite = Command(Fichier, u"Exite"_s, u"Close"_s, QKeySequence::Quit);

    Options = top(u"Options"_s, u"Option"_s);
    Languer = Named(Options->addMenu(u"Language"_s), u"Languer"_s);
    TagEditor = Command(Options, u"TagEditor"_s, u"Tag Editor"_s, Qt::CTRL | Qt::Key_T);
    trackcolor = Command(Options, u"trackcolor"_s, u"Track color"_s);
    acceptWma = Command(Options, u"acceptWma"_s, u"acceptWma"_s);
    acceptWma->setCheckable(true);

    Informations = top(u"Informations"_s, u"Information"_s);
    aide = Command(Informations, u"aide"_s, u"Help"_s, QKeySequence::HelpContents);
    FAQ = Command(Informations, u"FAQ"_s, u"FAQ"_s);
    Helpus = Command(Informations, u"Helpus"_s, u"Help us"_s);
    Homepage = Command(Informations, u"Homepage"_s, u"Homepage"_s);
    about = Command(Informations, u"about"_s, u"About"_s);

    popup = Named(new QMenu(&window), u"popup"_s);
    ConvertNow = Command(popup, u"ConvertNow"_s, u"Convert !"_s);
    Deletefromlist = Command(popup, u"Deletefromlist"_s, u"Remove from list"_s);
}

void ApplyLanguage(const QString& path, AudiotoolForm& form) {
    using namespace LanguageLine;
    LoadLanguageFile(path);

    const auto picture = [](QToolButton* button) {
        return [button](const QString& text) {
            button->setToolTip(text);
            button->setAccessibleName(text);
        };
    };
    const OutputPanel& output = *form.Output;

    WriteLines({
        {File, form.Fichier},
        {AddFile, form.addfile},
        {AddFile, picture(form.Image1)},
        {Close, form.Exite},
        {Options, form.Options},
        {Language, form.Languer},
        {TagInformation, form.TagEditor},
        {AcceptWma, form.acceptWma},
        {Information, form.Informations},
        {HomePage, form.Homepage},
        {About, form.about},
        {FilesToConvert, form.LabelFilesToConvert},
        {New, form.MenuDeletefiles},
        {New, picture(form.ClearList)},
        {OutputConfiguration, output.Label11},
        {BesideOriginal, output.CheckOutPath},
        {OutputPath, output.Label5},
        {OutputFormat, output.Label6},
        {FormatParameter, output.Label7},
        {ConversionInformation, form.Label12},
        {CurrentFile, form.LabelCurrentFile},
        {Quit, form.CmdQuit},
        {Cancel, form.cmdCancel},
        {ConvertAll, form.CmdConvert},
        {ConvertAll, form.convertmenu},
        {ConvertNow, form.ConvertNow},
        {RemoveFromList, form.Deletefromlist},
        {NameColour, form.trackcolor},
        {Help, form.aide},
    });
}

}  // namespace Sonmira
