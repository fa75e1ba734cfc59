#include "ui/LanguageTargets.h"

#include "formats/OutputPanel.h"
#include "library/widgets/FileList.h"
#include "shell/widgets/LanguageMenu.h"
#include "tags/TagPage.h"
#include "ui/BatchConverterForm.h"
#include "ui/TabStrip.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>

#include <set>

namespace Sonmira {

void ApplyLanguage(const QString& path, BatchConverterForm& form) {
    using namespace LanguageLine;
    LoadLanguageFile(path);

    const auto toolTip = [](QAction* button) {
        return [button](const QString& text) { button->setToolTip(text); };
    };
    const auto tab = [&form](int index) {
        return [&form, index](const QString& text) { form.SSTab1->setTabText(index, text); };
    };
    const auto header = [&form](FileListModel::Column column) {
        return [&form, column](const QString& text) { form.ListViewFiles->Rows().SetHeader(column, text); };
    };
    const OutputPanel& output = *form.Picture9;
    const TagMemory& memory = *form.TagPage.Picture4;
    const auto& captions = form.TagPage.Fields->Captions;

    WriteLines({
        // Captions 4 and 7 go to separators, so that buttons 3 and 6 keep their design captions.
        {New, form.ToolbarButton(1)},
        {AddFile, form.ToolbarButton(2)},
        {AddFolder, form.ToolbarButton(4)},
        {Cancel, form.ToolbarButton(7)},
        {Information, form.ToolbarButton(8)},
        {ConvertAll, form.ToolbarButton(5)},
        {ConversionInformation, tab(0)},
        {TagInformation, tab(1)},
        {File, form.file},
        {AddFile, form.addfile},
        {Quit, form.Quit},
        {Close, form.Quit},
        {Options, form.Options},
        {Language, form.Languer},
        {AcceptWma, form.acceptWma},
        {Information, form.Informations},
        {HomePage, form.Homepage},
        {About, form.about},
        {FilesToConvert, form.Label31},
        {Files, form.Label2},
        {New, form.mynew},
        {OutputConfiguration, output.Label11},
        {BesideOriginal, output.CheckOutPath},
        {OutputPath, output.Label5},
        {OutputFormat, output.Label6},
        {FormatParameter, output.Label7},
        {ConversionInformation, form.Label26},
        {Cancel, form.cancel},
        {ConvertAll, form.ConvertAll},
        {RemoveFromList, form.removefromlist},
        {TagVersion, form.TagPage.Frame1},
        // The album's own caption is no target and stays as it was designed.
        {Title, captions[0]},
        {Artists, captions[1]},
        {Album, captions[11]},
        {Genre, captions[3]},
        {GenreText, captions[4]},
        {Copyright, captions[5]},
        {Year, captions[6]},
        {TrackNumber, captions[7]},
        {Comment, captions[8]},
        {Composer, captions[9]},
        {Url, captions[10]},
        {OriginalArtist, captions[12]},
        {EncodedBy, captions[11]},
        {Save, form.TagPage.Command3},
        {Help, form.aide},
    });
    int line = Title;
    for (QLabel* caption : memory.Label24) caption->setText(LanguageLines[line++]);
    WriteLines({
        {Cancel, toolTip(form.TagPage.ToolbarButton(5))},
        {Save, toolTip(form.TagPage.ToolbarButton(7))},
        {TagInMemory, memory.Label23},
        {CopyTag, toolTip(form.TagPage.ToolbarButton(1))},
        {PasteTag, toolTip(form.TagPage.ToolbarButton(2))},
        {ShowTag, toolTip(form.TagPage.ToolbarButton(3))},
        {AddFolder, form.adddirectory},
        {RemoveOriginal, output.Check2},
        {Folder, form.Label28},
        {FolderCount, form.Label1},
        {Duration, form.Label27},
        {File, [&form](const QString& text) { form.Label32->setText(text + u':'); }},
        {SkipFile,
         [&form](const QString& text) {
             form.StopImg->setToolTip(text);
             form.StopImg->setAccessibleName(text);
         }},
        {ConvertSelection, form.ConvertSlection},
        {ConvertSelection, form.convertnoww},
        {PlayFile, form.playfilemenu},
        {PlayFile, form.playfile},
        {Action, form.ActionMenu},
        {OpenFolder, form.OpenDirectory},
        {TrackColumn, header(FileListModel::TrackColumn)},
        {Filename, header(FileListModel::FilenameColumn)},
        {Progress, header(FileListModel::ProgressColumn)},
    });
    form.CaptionsChanged();
}

namespace {

// A place of a letter that is free; those at the start of a word first. -1 where there is none.
qsizetype FreePlace(const QString& text, const std::set<QChar>& taken) {
    qsizetype any = -1;
    for (qsizetype n = 0; n < text.size(); ++n) {
        if (!text[n].isLetter() || taken.contains(text[n].toLower())) continue;
        const bool startsWord = n == 0 || text[n - 1].isSpace();
        if (startsWord) return n;
        if (any < 0) any = n;
    }
    return any;
}

void Give(const QList<QAction*>& actions) {
    QList<QAction*> named;
    QStringList texts;
    for (QAction* action : actions) {
        if (action->isSeparator()) continue;
        named.append(action);
        texts.append(action->text());
    }
    const QStringList given = WithMnemonics(texts);
    for (qsizetype n = 0; n < named.size(); ++n) named[n]->setText(given[n]);
}

}  // namespace

QStringList WithMnemonics(const QStringList& texts) {
    std::set<QChar> taken;
    for (const QString& text : texts) {
        const qsizetype mark = text.indexOf(u'&');
        if (mark >= 0 && mark + 1 < text.size()) taken.insert(text[mark + 1].toLower());
    }
    QStringList given;
    for (QString text : texts) {
        const qsizetype place = text.contains(u'&') ? -1 : FreePlace(text, taken);
        if (place >= 0) {
            taken.insert(text[place].toLower());
            text.insert(place, u'&');
        }
        given.append(text);
    }
    return given;
}

void GiveMnemonics(QMenuBar& bar) {
    Give(bar.actions());
    for (const QAction* action : bar.actions()) {
        if (action->menu() != nullptr) GiveMnemonics(*action->menu());
    }
}

void GiveMnemonics(QMenu& menu) {
    Give(menu.actions());
}

}  // namespace Sonmira
