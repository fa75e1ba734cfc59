#pragma once

#include <QComboBox>
#include <QLineEdit>

namespace Sonmira {

// A text box for one path. The user sees and types the desktop's form; the program sees the inner form,
// which survives even where the shown text cannot say it all (bytes that are no text).
class PathBox : public QLineEdit {
    Q_OBJECT

public:
    explicit PathBox(QWidget* parent = nullptr);

    QString Text() const { return Inner; }
    void SetText(const QString& path);

private:
    QString Inner;
};

// A fixed drop-down list. A selection from code raises the same Click as one by the user, also when the
// item was selected before; restoring saved values relies on that.
class ChoiceList : public QComboBox {
    Q_OBJECT

public:
    explicit ChoiceList(QWidget* parent = nullptr);

    // Selects the item of exactly that text. Without one nothing is selected and nothing is raised.
    void SelectText(const QString& text);
    // Selects the item of that place, counted from 0; -1 selects nothing. Any other place that the list does
    // not have fails with InvalidPropertyValue.
    void SelectPlace(int place);

Q_SIGNALS:
    void Click();
};

}  // namespace Sonmira
