#include "compact/AudiotoolTexts.h"

#include "compact/AudiotoolForm.h"
#include "compact/ElidedLabel.h"
#include "formats/OutputPanel.h"
#include "shell/widgets/LanguageTargets.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace Sonmira {

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
