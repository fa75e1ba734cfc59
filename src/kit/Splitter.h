#pragma once

#include "kit/SplitterBar.h"

#include <QFrame>

#include <optional>

namespace Sonmira {

class PropertyStore;
class SplitterBar;

// A container of two controls, named by text, with a bar between them that can be dragged. All sizes are
// twips. They are computed in 32 bits; the 16-bit properties saturate where they are read and written.
// Positions are exact in twips; what is on the screen lies on the nearest pixel.
// In a right-to-left layout everything is mirrored: the start edge is then the right one.
// The bar is the child "picSplitter". With the keyboard it is reached by Tab; the arrow keys move it, and
// each step is a drag of its own.
class Splitter : public QFrame {
    Q_OBJECT

public:
    // What the stored form and PropertyChanged call the properties; the order is that of the stored form.
    enum class Property {
        BorderStyle,
        SplitterAppearance,
        SplitterBorder,
        SplitterColor,
        Orientation,
        SplitterSize,
        Maintain,
        SplitterPos,
        RatioFromTop,
        Child1,
        Child2,
        MaxSize,
        MaxSizeAppliesTo,
        MinSize1,
        MinSize2,
        MinSizeAux,
        AllowResize,
        LiveUpdate
    };
    Q_ENUM(Property)

    // A control whose type name is this, without regard to case, hides its border beyond the edges of its
    // side. The type name is the dynamic property "TypeName" of a control that has one, else its class.
    static constexpr QStringView ListViewType = u"ListView";
    static constexpr const char* TypeNameProperty = "TypeName";

    explicit Splitter(QWidget* parent = nullptr);

    // The readers.
    qint32 BorderStyle() const { return Values.BorderStyle; }                // 0 none, 1 a line
    qint32 SplitterAppearance() const { return Values.SplitterAppearance; }  // 0 flat, 1 raised
    qint32 SplitterBorder() const { return Values.SplitterBorder; }          // 0 none, 1 a line
    // 0x00BBGGRR, or 0x80000000 plus the index of a system colour.
    quint32 SplitterColor() const { return Values.SplitterColor; }
    qint32 Orientation() const { return Geometry.Orientation; }  // 0 upright bar, 1 lying bar
    qint16 SplitterSize() const;
    qint32 Maintain() const { return Values.Maintain; }         // 0 keeps the position on resize, 1 the ratio
    qint16 SplitterPos() const;                                 // wanted
    qint16 CurrSplitterPos() const;                             // actual
    float RatioFromTop() const { return Values.RatioFromTop; }  // wanted
    float CurrRatioFromTop() const { return CurrentRatio; }     // actual
    QString Child1() const { return Values.Child1; }
    QString Child2() const { return Values.Child2; }
    qint16 MaxSize() const;                                                // 0: none
    qint32 MaxSizeAppliesTo() const { return Geometry.MaxSizeAppliesTo; }  // 0 Child1, 1 Child2
    qint16 MinSize1() const;
    qint16 MinSize2() const;
    qint16 MinSizeAux() const;
    bool AllowResize() const { return Values.AllowResize; }
    bool LiveUpdate() const { return Values.LiveUpdate; }

    // The writers. Each reports PropertyChanged. Negative sizes become 0; what a limit does to the others is
    // said in the .cpp, where it is done.
    void SetBorderStyle(qint32 style);
    void SetSplitterAppearance(qint32 appearance);
    void SetSplitterBorder(qint32 border);
    void SetSplitterColor(quint32 color);
    void SetOrientation(qint32 orientation);
    void SetSplitterSize(int size);
    void SetMaintain(qint32 maintain);
    void SetSplitterPos(int position);
    void SetRatioFromTop(float ratio);
    void SetChild1(const QString& name);
    void SetChild2(const QString& name);
    void SetMaxSize(int size);
    void SetMaxSizeAppliesTo(qint32 child);
    void SetMinSize1(int size);
    void SetMinSize2(int size);
    void SetMinSizeAux(int size);
    void SetAllowResize(bool allow);
    void SetLiveUpdate(bool live);

    // The stored form. ReadProperties gives every property, stored or default, to its writer in the order of
    // Property, so the ratio has the last word over the position.
    void WriteProperties(PropertyStore& store) const;
    void ReadProperties(const PropertyStore& store);

    // The whole picture in twips, without the 16-bit limits.
    const SplitterGeometry& Measures() const { return Geometry; }
    int BarPosition() const { return Position; }
    int CrossSize() const { return Cross; }
    // The contained control of that name without regard to case, or null.
    QWidget* Contained(const QString& name) const;
    bool IsDragging() const { return Drag.has_value(); }

Q_SIGNALS:
    // At the end of each layout of the children.
    void Resize();
    void PropertyChanged(Sonmira::Splitter::Property property);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class SplitterBar;
    friend class AccessibleSplitterBar;

    // While one of these is done, it is not begun again. This is what lets the two wanted positions follow
    // each other, and the bar and its ratio, without an end.
    enum Doing : unsigned { SettingPosition = 1, SettingRatio = 2, MovingBar = 4, SettingCurrentRatio = 8 };
    class ReentrancyGuard;

    struct Stored {
        qint32 BorderStyle = 0;
        qint32 SplitterAppearance = 1;
        qint32 SplitterBorder = 1;
        quint32 SplitterColor = 0x404040;
        qint32 Maintain = 1;
        int SplitterPos = 0;
        float RatioFromTop = 0.5F;
        QString Child1;
        QString Child2;
        bool AllowResize = true;
        bool LiveUpdate = true;
    };
    struct DragState {
        int Start;  // where the bar was
        int Grab;   // where in the bar the pointer holds it
    };

    bool IsDoing(Doing what) const { return (Flags & what) != 0; }
    bool IsBarHorizontal() const { return Geometry.Orientation == 1; }
    int Length() const;
    int Across() const;
    QRect OnScreen(const QRect& twips) const;

    void WritePosition(int position);
    void MoveBar(int position);
    void SetCurrentRatio(float ratio);
    void ApplyMaintain();
    void ResizeControl();
    void LayOut();
    void PlaceBar();
    void GiveAll(const PropertyStore& store, int standardPosition);

    void StartDrag(const QPoint& pointer);
    void ContinueDrag(const QPoint& pointer);
    void EndDrag();
    // The bar goes back to where the drag began.
    void CancelDrag();
    // Moves the bar as a drag over so many logical pixels does.
    void Step(int pixels);

    Stored Values;
    SplitterGeometry Geometry;
    SplitterBar* Bar;
    int Position = 0;
    int Cross = 0;
    float CurrentRatio = 0;
    unsigned Flags = 0;
    bool LayoutEnabled = false;
    std::optional<DragState> Drag;
};

}  // namespace Sonmira
