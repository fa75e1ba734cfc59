#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// What asks or tells the user something, as functions that the widgets half fills in at start-up and a
// test replaces. Without either a message goes to standard error and a question is cancelled.
namespace Sonmira {

enum class MessageIcon { Critical, Warning, Information };

struct OpenDialogRequest {
    QString Title;
    QString Filter;       // pairs "description|patterns|", patterns separated by ";"
    QString StartFolder;  // inner path; may be empty or name no folder
};

struct DialogFunctions {
    // Shows `text` until the user closes it.
    std::function<void(const QString& text, MessageIcon icon, const QString& title)> ShowMessage;
    // The chosen files as inner paths, in the order given; nothing when cancelled.
    std::function<std::optional<QStringList>(const OpenDialogRequest& request)> OpenFiles;
    // The chosen folder as an inner path; empty when cancelled.
    std::function<QString(const QString& title)> BrowseForFolder;
    // Whether the user answers yes.
    std::function<bool(const QString& question, const QString& title)> AskYesNo;
    // The chosen colour, from 0xRRGGBB to the same; nothing when cancelled.
    std::function<std::optional<quint32>(quint32 start)> ChooseColour;
};

DialogFunctions& Dialogs();

}  // namespace Sonmira
