#pragma once

#include "shell/LanguageFiles.h"

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

class QAction;
class QMenu;

namespace Sonmira {

// The items of a language menu, one for each language file, in the order of their folder. The saved choice
// is a place in this order.
class LanguageMenu : public QObject {
    Q_OBJECT

public:
    // Puts the first item, with its design caption and no path, into `languer`, which outlives this object.
    explicit LanguageMenu(QMenu& languer);

    // Gives each language file an item. Without any file the first item stays as it was designed.
    void FillLanguageMenu();

    int HighestIndex() const { return static_cast<int>(LangueName.size()) - 1; }
    // The path of the file behind an item. An index that the menu does not have fails with
    // SubscriptOutOfRange, here and below.
    QString PathOf(int index) const;
    QAction* Item(int index) const;

    void UncheckAllBut(int index) const;

Q_SIGNALS:
    // A click of the user on the item of that index. What it checks is up to the handler.
    void LangueNameClick(int index);

private:
    void Append();

    QMenu& Languer;
    std::vector<QAction*> LangueName;
};

// A line of the language file and where it goes: the text or title of a control, or what a function does with
// it.
struct LanguageTarget {
    template <class Control>
    LanguageTarget(int line, Control* control)
        : Line(line), Write([control](const QString& text) {
              if constexpr (requires { control->setTitle(text); }) {
                  control->setTitle(text);
              } else {
                  control->setText(text);
              }
          }) {}
    LanguageTarget(int line, std::function<void(const QString& text)> write)
        : Line(line), Write(std::move(write)) {}

    int Line;
    std::function<void(const QString& text)> Write;
};

// Writes each line to its target, one after the other: where a line is missing, those before it stand.
inline void WriteLines(std::initializer_list<LanguageTarget> targets) {
    for (const LanguageTarget& target : targets) target.Write(LanguageLines[target.Line]);
}

}  // namespace Sonmira
