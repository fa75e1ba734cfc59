#pragma once

#include "tags/TagFields.h"

#include <QFrame>

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

}  // namespace Sonmira
