#pragma once

#include <QDialog>
#include <QString>

#include <functional>

class QWidget;
class QListWidget;
class QPushButton;

namespace Sonmira {

class LanguageMenu;

// Loads the language file of that path and gives a window its texts.
using ApplyTexts = std::function<void(const QString& path)>;

// The place in the language menu that the settings file remembers, as it stands there. Where there is none
// this is the first start: the logo goes and the user is asked. The empty text where the picker was closed
// without a choice.
QString SavedLanguagePlace(QWidget& window);

// Checks the item of that place and applies its file. A place that the menu does not have fails with
// SubscriptOutOfRange.
void ApplyLanguagePlace(const LanguageMenu& languages, int place, const ApplyTexts& apply);

// A click on an item saves its place and applies its file at once, and unchecks the others.
void ConnectLanguageMenu(LanguageMenu& languages, const ApplyTexts& apply);

// The language picker of the first start, in English only: no language is chosen yet. One click on a row
// chooses and closes; closing the window by its button chooses nothing, and
// Escape does nothing at all.
class Form1 : public QDialog {
    Q_OBJECT

public:
    explicit Form1(QWidget* owner);

    QListWidget* ListView1;
    QPushButton* Command1;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FillLanguageList();
    // Saves the place of the marked row, the first one when none is marked, and closes.
    void Command1_Click();
};

}  // namespace Sonmira
