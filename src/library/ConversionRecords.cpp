#include "library/ConversionRecords.h"

#include "platform/Failure.h"
#include "platform/Paths.h"

#include <algorithm>
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
    MoveWalks(std::vector<int>(Records.size(), -1));
    Records.clear();
    PositionsByPath.clear();
    PositionsByIndex.clear();
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
    PositionsByIndex[record.Index].append(position);
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
    MovePositions(PositionsByIndex, moved);
    MoveWalks(moved);
}

void ConversionRecords::MoveWalks(const std::vector<int>& moved) {
    for (RecordWalk* walk : Walks) walk->Follow(moved);
}

void ConversionRecords::MarkRemoved(int position) {
    if (position < 0 || position > UpperBound()) throw Failure(FailureNumber::SubscriptOutOfRange);
    Records[static_cast<std::size_t>(position)].Removed = true;
}

std::optional<int> ConversionRecords::FirstWithIndex(qint16 index) const {
    const auto found = PositionsByIndex.constFind(index);
    return found == PositionsByIndex.constEnd() ? std::nullopt : std::optional<int>(found->first());
}

std::optional<int> ConversionRecords::FolderHolding(const ConversionRecord& record) const {
    if (record.Parent == 0) return 0;
    const QString folder = FolderOf(record.Path);
    for (const int position : PositionsByIndex.value(record.Parent)) {
        if (WithBackslash((*this)[position].Path) == folder) return position;
    }
    return FirstWithIndex(record.Parent);
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

template <class Test>
bool ConversionRecords::HoldsWhere(const QString& path, Test&& test) const {
    const auto found = PositionsByPath.constFind(path);
    if (found == PositionsByPath.constEnd()) return false;
    return std::any_of(found->begin(), found->end(), [&](int position) {
        const ConversionRecord& record = (*this)[position];
        return !record.Removed && test(record);
    });
}

bool ConversionRecords::HoldsPath(const QString& path) const {
    return HoldsWhere(path, [](const ConversionRecord& /*record*/) { return true; });
}

bool ConversionRecords::HoldsFolder(const QString& path) const {
    return HoldsWhere(path, [](const ConversionRecord& record) { return !record.IsFile; });
}

bool ConversionRecords::HoldsSingleFile(const QString& path) const {
    return HoldsWhere(path,
                      [](const ConversionRecord& record) { return record.IsFile && record.Parent == 0; });
}

RecordWalk::RecordWalk(ConversionRecords& records) : Records(records), Last(records.UpperBound()) {
    Records.Walks.push_back(this);
}

RecordWalk::~RecordWalk() {
    std::erase(Records.Walks, this);
}

std::optional<int> RecordWalk::Next() {
    if (Place >= Last) return std::nullopt;
    return ++Place;
}

std::optional<int> RecordWalk::NextChildOf(qint16 index) {
    const std::optional<int> next = Records.NextChildOf(index, Place);
    if (!next || *next > Last) return std::nullopt;
    Place = *next;
    return Place;
}

void RecordWalk::Follow(const std::vector<int>& moved) {
    const auto stays = [](int position) { return position >= 0; };
    const auto keptUpTo = [&](int position) {
        return static_cast<int>(std::count_if(moved.begin(), moved.begin() + position + 1, stays)) - 1;
    };
    Place = keptUpTo(Place);
    Last = keptUpTo(Last);
}

}  // namespace Sonmira
