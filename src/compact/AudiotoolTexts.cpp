#include "compact/AudiotoolTexts.h"

#include "compact/AudiotoolForm.h"
#include "compact/ElidedLabel.h"
#include "formats/OutputPanel.h"
#include "shell/LanguageFiles.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace Sonmira {

namespace {

void SetPictureText(QToolButton& button, const QString& text) {
    button.setToolTip(text);
    button.setAccessibleName(text);
}

}  // namespace

void ApplyLanguage(const QString& path, AudiotoolForm& form) {
    LoadLanguageFile(path);
    const LanguageTable& line = LanguageLines;

    form.Fichier->setTitle(line[0]);
    form.addfile->setText(line[1]);
    SetPictureText(*form.Image1, line[1]);
    form.Exite->setText(line[2]);
    form.Options->setTitle(line[3]);
    form.Languer->setTitle(line[4]);
    form.TagEditor->setText(line[5]);
    form.acceptWma->setText(line[6]);
    form.Informations->setTitle(line[7]);
    form.Homepage->setText(line[8]);
    form.about->setText(line[9]);
    form.LabelFilesToConvert->setText(line[10]);
    form.MenuDeletefiles->setText(line[12]);
    SetPictureText(*form.ClearList, line[12]);
    form.Output->Label11->setText(line[13]);
    form.Output->CheckOutPath->setText(line[14]);
    form.Output->Label5->setText(line[15]);
    form.Output->Label6->setText(line[16]);
    form.Output->Label7->setText(line[17]);
    form.Label12->setText(line[19]);
    form.LabelCurrentFile->setText(line[20]);
    form.CmdQuit->setText(line[21]);
    form.cmdCancel->setText(line[22]);
    form.CmdConvert->setText(line[23]);
    form.convertmenu->setText(line[23]);
    form.ConvertNow->setText(line[24]);
    form.Deletefromlist->setText(line[25]);
    form.trackcolor->setText(line[47]);
    form.aide->setText(line[49]);
}

}  // namespace Sonmira
