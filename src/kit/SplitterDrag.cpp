#include "kit/Splitter.h"
#include "kit/SplitterBar.h"
#include "kit/Twips.h"

namespace Sonmira {

void Splitter::StartDrag(const QPoint& pointer) {
    const int grabbed = Bar->PlaceAlong(pointer);
    Drag = {Position, ToTwips(grabbed)};
    Bar->raise();
    if (!Values.LiveUpdate) {
        Bar->Highlight(Values.SplitterAppearance, Values.SplitterBorder, Values.SplitterColor);
        // The border has moved the inside of the bar below the pointer, which still holds the same point.
        Drag->Grab -= ToTwips(grabbed - Bar->PlaceAlong(pointer));
    }
    Bar->update();
}

void Splitter::ContinueDrag(const QPoint& pointer) {
    if (!IsDragging()) return;
    const int wanted = Geometry.Clamp(Length(), ToTwips(Bar->PlaceAlong(pointer)) - Drag->Grab + Position);
    if (wanted == Position) return;
    LayoutEnabled = Values.LiveUpdate;
    MoveBar(wanted);
    LayoutEnabled = true;
}

void Splitter::EndDrag() {
    if (!IsDragging()) return;
    if (!Values.LiveUpdate) {
        Bar->RemoveHighlight();
        LayOut();
    }
    WritePosition(Position);
    Drag.reset();
}

void Splitter::CancelDrag() {
    if (!IsDragging()) return;
    const int start = Drag->Start;
    Drag.reset();
    if (Bar->IsHighlighted()) Bar->RemoveHighlight();
    MoveBar(start);
    LayOut();
}

void Splitter::Step(int pixels) {
    const int wanted = Geometry.Clamp(Length(), Position + ToTwips(pixels));
    if (wanted != Position) WritePosition(wanted);
}

}  // namespace Sonmira
