#pragma once

#include <QHash>
#include <QRect>

class QWidget;

namespace Sonmira {

// Places the controls of one container by hand. All measures are twips; a place counts from the start edge
// of the container, which is the right one in a right-to-left layout: there everything is mirrored.
// What is read is what the control has on the screen, so that a rule sees what the earlier ones made of it.
class Placing {
public:
    explicit Placing(QWidget& container) : Container(container) {}

    // A measure of the design, which was made for letters of the usual size, for the letters in use. Nothing
    // ever shrinks.
    int Scaled(int twips) const;

    // The container's own size.
    int Width() const;
    int Height() const;

    int Left(const QWidget* control) const;
    int Top(const QWidget* control) const;
    int Width(const QWidget* control) const;
    int Height(const QWidget* control) const;

    // Each fails with InvalidPropertyValue where a size would be negative, and then changes nothing.
    void SetLeft(QWidget* control, int left);
    void SetTop(QWidget* control, int top);
    void SetWidth(QWidget* control, int width);
    void SetHeight(QWidget* control, int height);

    // Gives a control its place, and takes charge of it: Mirror keeps it there.
    void Place(QWidget* control, int left, int top, int width, int height);
    // To be called when the width of the container has changed: what is in charge keeps its distance from the
    // start edge.
    void Mirror();

private:
    // In pixels from the start edge.
    QRect RoomOf(const QWidget* control) const;
    void Move(QWidget* control, const QRect& room);
    QRect OnScreen(const QRect& room) const;

    QWidget& Container;
    QHash<const QWidget*, QRect> Placed;
};

// How much larger the letters of a control are than those of the design; 1 at least.
double FontScale(const QWidget& control);

}  // namespace Sonmira
