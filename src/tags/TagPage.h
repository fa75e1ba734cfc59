#pragma once

#include "kit/Placing.h"
#include "tags/TagFields.h"

#include <QFrame>
#include <QWidget>

namespace Sonmira {

// The panel "Tag in memory": the 13 texts of the tag that was copied last. A click anywhere on it hides it.
class TagMemory : public QFrame {
    Q_OBJECT

public:
    explicit TagMemory(QWidget* parent);

    const TagTexts& Texts() const { return Remembered; }
    void Remember(const TagTexts& texts);

    QLabel* Label23;  // title
    std::array<QLabel*, TagFieldCount> Label24;
    std::array<QLabel*, TagFieldCount> Label25;  // the texts; "empty" until something was copied

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    TagTexts Remembered;
};

struct TagPanelForm;

// The card of the tag page. It gives its controls their places and lets them follow its width; where it is
// higher than it must be, the rows stand further apart.
class TagPage : public QWidget {
    Q_OBJECT

public:
    // The lowest stretch of the page lies below what is shown of it, in twips.
    static constexpr int HiddenFoot = 150;

    // The form outlives the page and is complete when the page first has a size.
    TagPage(QWidget* parent, const TagPanelForm& form) : QWidget(parent), Form(form), Inside(*this) {}

    // To be called when the form is complete.
    void PlaceControls();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void FollowWidth();
    int RowPitch() const;

    const TagPanelForm& Form;
    Placing Inside;
    bool IsComplete = false;
};

}  // namespace Sonmira
