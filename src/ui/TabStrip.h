#pragma once

#include <QTabBar>

namespace Sonmira {

// A strip of tabs at the top of an area as high as it likes. The pages are no children of it: they are
// placed over the rest of the area.
class TabStrip : public QTabBar {
    Q_OBJECT

public:
    explicit TabStrip(QWidget* parent = nullptr);

    // The height of the tabs alone.
    int StripHeight() const;

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace Sonmira
