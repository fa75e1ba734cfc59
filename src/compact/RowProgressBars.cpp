#include "compact/RowProgressBars.h"

#include "compact/AudiotoolList.h"
#include "compact/RowBar.h"
#include "kit/Twips.h"
#include "platform/EventLoop.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/WindowMeasures.h"

#include <QHeaderView>
#include <QScopeGuard>
#include <QScrollBar>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// What is asked for of a cell: the rectangle of its label.
constexpr int LabelOfCell = 2;

// A bar over a cell, by the rule of the design, which counts in twips.
QRect PlaceOver(const QRect& cell) {
    const int cellHeight = ToTwips(cell.height());
    const int height = cellHeight - 40;
    const int top = (cellHeight - height) / 2 + ToTwips(cell.top()) + 10;
    return {cell.left(), ToPixels(top), cell.width(), ToPixels(height)};
}

bool MovesTheList(int key) {
    constexpr int Keys[] = {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End,   Qt::Key_Home,
                            Qt::Key_Left,   Qt::Key_Up,       Qt::Key_Right, Qt::Key_Down};
    return std::find(std::begin(Keys), std::end(Keys), key) != std::end(Keys);
}

}  // namespace

RowProgressBars::RowProgressBars(AudiotoolList& list) : List(list) {
    Load();
    connect(&List.Rows(), &AudiotoolRows::StateChanged, this, &RowProgressBars::ShowState);
}

RowBar& RowProgressBars::Element(int n) const {
    if (n < 0 || n > HighestElement()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return *Progressconvert[static_cast<std::size_t>(n)];
}

void RowProgressBars::Load() {
    auto* bar = new RowBar(List, HighestElement() + 1);
    bar->setObjectName(u"Progressconvert%1"_s.arg(Progressconvert.size()));
    Progressconvert.push_back(bar);
}

void RowProgressBars::ShowState(int row) {
    if (row - 1 > HighestElement()) return;
    RowBar& bar = Element(row - 1);
    bar.setAccessibleName(ShownName(FileNameOf(List.Rows().Path(row))));
    bar.Show(List.Rows().State(row));
}

void RowProgressBars::AttachRowProgressBars() {
    // Element 0 is there already when the first row comes.
    if (List.Rows().Count() == 1) ShowState(1);
    for (int row = 1; row <= List.Rows().Count(); ++row) {
        if (row - 1 <= HighestElement()) continue;
        Load();
        ShowState(row);
        YieldToEventLoop();
    }
    LayoutRowProgressBars();
    Follow();
}

void RowProgressBars::LayoutRowProgressBars() {
    // Asking for a cell may make the list settle, which asks for a layout.
    if (std::exchange(LayingOut, true)) return;
    const auto end = qScopeGuard([this] { LayingOut = false; });
    const int rows = std::min(List.Rows().Count(), HighestElement() + 1);
    for (int row = 0; row < rows; ++row) {
        QRect cell;
        GetSubItemRect(&List, row, AudiotoolRows::ProgressColumn, LabelOfCell, cell);
        RowBar& bar = Element(row);
        const QRect place = PlaceOver(cell);
        if (bar.geometry() != place) bar.setGeometry(place);
        const bool isInView = cell.top() >= 0;
        if (bar.isHidden() == isInView) bar.setVisible(isInView);
    }
}

// The list has done its own part before the bars follow.
void RowProgressBars::Follow() {
    if (std::exchange(Following, true)) return;
    const auto follow = [this] { LayoutRowProgressBars(); };
    OnEvent(List.horizontalScrollBar(), &QScrollBar::valueChanged, this, follow);
    OnEvent(List.verticalScrollBar(), &QScrollBar::valueChanged, this, follow);
    OnEvent(List.horizontalHeader(), &QHeaderView::sectionResized, this, follow);
    OnEvent(&List, &AudiotoolList::GeometriesUpdated, this, follow);
    OnEvent(&List, &AudiotoolList::KeyHandled, this, [this](int key) {
        if (MovesTheList(key)) LayoutRowProgressBars();
    });
}

void RowProgressBars::Unload(std::size_t elements) {
    for (; Progressconvert.size() > elements; Progressconvert.pop_back()) delete Progressconvert.back();
    if (List.Rows().Count() > 0) return;
    Progressconvert.front()->hide();
    Progressconvert.front()->Show({});
}

void RowProgressBars::UnloadLast(int removedRow) {
    Unload(std::max<std::size_t>(Progressconvert.size() - 1, 1));
    for (int row = removedRow; row <= List.Rows().Count(); ++row) ShowState(row);
}

void RowProgressBars::UnloadAllButFirst() {
    Unload(1);
}

}  // namespace Sonmira
