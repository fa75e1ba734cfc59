#pragma once

#include <QProxyStyle>

namespace Sonmira {

// The calm teal: how all standard controls look. What it does not draw itself is Fusion's, in the colours of
// the palette in force. A text that has not room enough ends in an ellipsis, and its tool tip says it whole.
class CalmStyle : public QProxyStyle {
    Q_OBJECT

public:
    CalmStyle();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawItemText(QPainter* painter, const QRect& room, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;

private:
    static constexpr int FieldMargin = 4;  // of the text in a field, beyond the field's own

    static void DrawTab(const QStyleOption& option, QPainter& painter);
    void DrawTabLabel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
    void DrawCombo(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawGroup(const QStyleOptionComplex& option, QPainter& painter) const;
    void DrawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawSpin(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawScroll(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
};

}  // namespace Sonmira
