#include "platform/widgets/QtDialogs.h"

#include "platform/Dialogs.h"
#include "platform/Folders.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::Warning:
            return QMessageBox::Warning;
        default:
            return QMessageBox::Information;
    }
}

void ShowMessage(const QString& text, MessageIcon icon, const QString& title) {
    QMessageBox box(IconOf(icon), title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.setObjectName(u"MessageBox");
    // A file name in the text may look like markup.
    box.setTextFormat(Qt::PlainText);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
}

// What Qt's dialog can go to: it does not know names that are no text.
QString StartFolderOf(const QString& folder) {
    return folder.isEmpty() || HoldsRawBytes(folder) || !IsFolder(folder) ? QString() : ShownPath(folder);
}

// The desktop's own dialogs differ from one desktop to the next; ours is the same everywhere.
void UseOwnDialog(QFileDialog& dialog) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setWindowModality(Qt::ApplicationModal);
}

std::optional<QStringList> OpenFiles(const OpenDialogRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), request.Title, StartFolderOf(request.StartFolder));
    dialog.setObjectName(u"OpenDialog");
    UseOwnDialog(dialog);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilters(NameFiltersOf(request.Filter));
    if (dialog.exec() != QDialog::Accepted) return {};
    QStringList files;
    for (const QString& file : dialog.selectedFiles()) files += FromNative(ToNarrow(file));
    return files;
}

QString PickFolder(const QString& title) {
    QFileDialog dialog(QApplication::activeWindow(), title);
    dialog.setObjectName(u"FolderDialog");
    UseOwnDialog(dialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return FromNative(ToNarrow(dialog.selectedFiles().constFirst()));
}

bool AskYesNo(const QString& question, const QString& title) {
    QMessageBox box(QMessageBox::Question, title, question, QMessageBox::Yes | QMessageBox::No,
                    QApplication::activeWindow());
    box.setObjectName(u"Question");
    box.setTextFormat(Qt::PlainText);
    box.setWindowModality(Qt::ApplicationModal);
    return box.exec() == QMessageBox::Yes;
}

std::optional<quint32> ChooseColour(quint32 start) {
    QColorDialog dialog(QColor(start), QApplication::activeWindow());
    dialog.setObjectName(u"ColourDialog");
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowModality(Qt::ApplicationModal);
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.selectedColor().rgb() & RGB_MASK;
}

QStringList WithoutDuplicates(const QStringList& patterns) {
    QStringList kept;
    for (const QString& pattern : patterns) {
        if (!kept.contains(pattern, Qt::CaseInsensitive)) kept += pattern;
    }
    return kept;
}

}  // namespace

QStringList NameFiltersOf(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        // Qt reads the patterns from the last parentheses; the description's own would stand there twice.
        if (description.endsWith(u')')) description.truncate(description.lastIndexOf(u'('));
        const QStringList patterns = WithoutDuplicates(parts[i + 1].split(u';', Qt::SkipEmptyParts));
        if (!patterns.isEmpty()) filters += description.trimmed() + u" ("_s + patterns.join(u' ') + u')';
    }
    return filters;
}

void InstallQtDialogs() {
    Dialogs() = {ShowMessage, OpenFiles, PickFolder, AskYesNo, ChooseColour};
}

}  // namespace Sonmira
