#pragma once

#include <QObject>

#include <vector>

namespace Sonmira {

class AudiotoolList;
class RowBar;

// The progress bars of the rows (`Progressconvert`): element n stands over the last column of row n+1. Their
// number only grows while rows are added and goes down where rows go; element 0 is always there, and hidden
// while there is no row.
class RowProgressBars : public QObject {
    Q_OBJECT

public:
    // The list outlives the bars, which are children of its viewport.
    explicit RowProgressBars(AudiotoolList& list);

    int HighestElement() const { return static_cast<int>(Progressconvert.size()) - 1; }
    // Fails with SubscriptOutOfRange for an element that is not there.
    RowBar& Element(int n) const;

    // Makes the bars that are missing, puts all in place, and follows the list from the first time on.
    void AttachRowProgressBars();
    // Puts each bar over its row. A bar whose row is scrolled out above hides itself.
    void LayoutRowProgressBars();

    // Takes the last element away, unless it is element 0, because that row went; the elements from its place
    // on show the rows that have moved up.
    void UnloadLast(int removedRow);
    void UnloadAllButFirst();

private:
    void Load();
    void Unload(std::size_t elements);
    void Follow();
    void ShowState(int row);

    AudiotoolList& List;
    std::vector<RowBar*> Progressconvert;
    bool Following = false;
    bool LayingOut = false;
};

}  // namespace Sonmira
