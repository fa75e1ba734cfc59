#include "library/ConversionRecords.h"

#include "platform/Failure.h"

#include <limits>

namespace Sonmira {

namespace {

template <class Key>
void MovePositions(QHash<Key, QList<int>>& lists, const std::vector<int>& moved) {
    const auto newPlace = [&](int position) { return moved[static_cast<std::size_t>(position)]; };
    for (QList<int>& positions : lists) {
        positions.removeIf([&](int position) { return newPlace(position) < 0; });
        for (int& position : positions) position = newPlace(position);
    }
    // By itself: a hash that drops entries on the way may show others twice.
    erase_if(lists, [](typename QHash<Key, QList<int>>::iterator entry) { return entry->isEmpty(); });
}

}  // namespace

void ConversionRecords::Reset() {
    Records.clear();
    PositionsByPath.clear();
    FirstByIndex.clear();
    PositionsByParent.clear();
    Append({});
}

const ConversionRecord& ConversionRecords::operator[](int position) const {
    if (position < 0 || position > UpperBound()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return Records[static_cast<std::size_t>(position)];
}

int ConversionRecords::Append(ConversionRecord record) {
    const int position = static_cast<int>(Records.size());
    record.Index = position <= std::numeric_limits<qint16>::max() ? static_cast<qint16>(position) : qint16{0};
    Records.push_back(std::move(record));
    AddToIndex(position);
    return position;
}

void ConversionRecords::AddToIndex(int position) {
    const ConversionRecord& record = Records[static_cast<std::size_t>(position)];
    PositionsByPath[record.Path].append(position);
    if (!FirstByIndex.contains(record.Index)) FirstByIndex.insert(record.Index, position);
    if (position > 0) PositionsByParent[record.Parent].append(position);
}

void ConversionRecords::SetName(int position, const QString& name) {
    if (position < 0 || position > UpperBound()) throw Failure(FailureNumber::SubscriptOutOfRange);
    Records[static_cast<std::size_t>(position)].Name = name;
}

void ConversionRecords::Compact() {
    // Where each record goes; -1 where it is dropped. The index is moved along and not made anew: hashing
    // every path again would cost more than all the rest of a removal.
    std::vector<int> moved;
    moved.reserve(Records.size());
    int next = 0;
    for (const ConversionRecord& record : Records) moved.push_back(record.Removed ? -1 : next++);
    std::erase_if(Records, [](const ConversionRecord& record) { return record.Removed; });
    MovePositions(PositionsByPath, moved);
    MovePositions(PositionsByParent, moved);
    FirstByIndex.clear();
    FirstByIndex.reserve(next);
    for (int position = UpperBound(); position >= 0; --position) {
        FirstByIndex.insert(Records[static_cast<std::size_t>(position)].Index, position);
    }
}

void ConversionRecords::MarkRemoved(int position) {
    if (position < 0 || position > UpperBound()) throw Failure(FailureNumber::SubscriptOutOfRange);
    Records[static_cast<std::size_t>(position)].Removed = true;
}

std::optional<int> ConversionRecords::FirstWithIndex(qint16 index) const {
    const auto found = FirstByIndex.constFind(index);
    return found == FirstByIndex.constEnd() ? std::nullopt : std::optional<int>(found.value());
}

std::optional<int> ConversionRecords::FirstWithPath(const QString& path) const {
    const auto found = PositionsByPath.constFind(path);
    return found == PositionsByPath.constEnd() ? std::nullopt : std::optional<int>(found->first());
}

std::optional<int> ConversionRecords::NextChildOf(qint16 index, int position) const {
    const QList<int> children = ChildrenOf(index);
    const auto next = std::upper_bound(children.begin(), children.end(), position);
    return next == children.end() ? std::nullopt : std::optional<int>(*next);
}

bool ConversionRecords::HoldsPath(const QString& path) const {
    const QList<int> positions = PositionsByPath.value(path);
    return std::any_of(positions.begin(), positions.end(),
                       [this](int position) { return !(*this)[position].Removed; });
}

bool ConversionRecords::HoldsFolder(const QString& path) const {
    const QList<int> positions = PositionsByPath.value(path);
    return std::any_of(positions.begin(), positions.end(), [this](int position) {
        const ConversionRecord& record = (*this)[position];
        return !record.IsFile && !record.Removed;
    });
}

}  // namespace Sonmira
