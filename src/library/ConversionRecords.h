#pragma once

#include <QHash>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace Sonmira {

class RecordWalk;

// One file or folder of the collection.
struct ConversionRecord {
    qint16 Index = 0;   // the position at which the record was made; never renumbered afterwards
    qint16 Parent = 0;  // the Index of the folder that holds it; 0 directly under the root
    bool IsFile = false;
    QString Path;  // full inner path, also the key of the tree node; no trailing backslash but for a root
    QString Name;  // the text behind the last backslash
    bool Removed = false;
    QString RelativeFolder;  // where the item lies below the output folder
};

// The one flat array of records. Position 0 is a blank sentinel that is never a real entry; records start
// at 1. The array is walked in order by everyone; the look-ups below answer what such a walk would, from
// an index beside the array, so that they cost the same for 30,000 records as for ten.
class ConversionRecords {
public:
    ConversionRecords() { Reset(); }

    // Leaves the sentinel alone.
    void Reset();

    int UpperBound() const { return static_cast<int>(Records.size()) - 1; }
    // Fails with SubscriptOutOfRange outside 0 to UpperBound.
    const ConversionRecord& operator[](int position) const;

    // Adds the record behind the last one and returns its position. Index becomes that position; where it
    // is beyond 16 bits the field stays 0.
    int Append(ConversionRecord record);

    void MarkRemoved(int position);
    void SetName(int position, const QString& name);

    // Drops the records that are marked as removed. The others move up but keep their numbers, so that a
    // record made later may share a number with an older one. Walks that are under way follow.
    void Compact();

    // Walks from position 0 up; the first record that matches.
    std::optional<int> FirstWithIndex(qint16 index) const;
    std::optional<int> FirstWithPath(const QString& path) const;

    // The folder that holds a record: of the records whose number is its Parent the one whose path is the
    // record's folder, since a number may be shared, and the first of them where none has that path. The
    // sentinel for a record under the root.
    std::optional<int> FolderHolding(const ConversionRecord& record) const;

    // The positions of the records whose Parent is that number, in order.
    QList<int> ChildrenOf(qint16 index) const { return PositionsByParent.value(index); }

    // The first of them behind that position.
    std::optional<int> NextChildOf(qint16 index, int position) const;

    // Whether any record of that path is not removed: any at all, a folder, a file directly under the root.
    bool HoldsPath(const QString& path) const;
    bool HoldsFolder(const QString& path) const;
    bool HoldsSingleFile(const QString& path) const;

private:
    friend class RecordWalk;
    template <class Test>
    bool HoldsWhere(const QString& path, Test&& test) const;
    void AddToIndex(int position);
    void MoveWalks(const std::vector<int>& moved);

    std::vector<ConversionRecord> Records;
    QHash<QString, QList<int>> PositionsByPath;
    QHash<qint16, QList<int>> PositionsByIndex;
    QHash<qint16, QList<int>> PositionsByParent;  // the sentinel is nobody's child
    std::vector<RecordWalk*> Walks;               // under way; they belong to those who walk
};

class ConversionRecords;

// A walk over the records in their order, which stays in step where records are dropped on the way: what was
// dropped at or before its place moves the place down, and what was dropped before its end the end, so that
// no record behind it is passed by. Records that are added meanwhile are not walked.
class RecordWalk {
public:
    // Begins at the first record behind the sentinel and ends with the one that is the last now. `records`
    // must outlive the walk.
    explicit RecordWalk(ConversionRecords& records);
    ~RecordWalk();
    RecordWalk(const RecordWalk&) = delete;
    RecordWalk& operator=(const RecordWalk&) = delete;

    // The position of the next record, or of the next one whose Parent is that number; nothing at the end.
    std::optional<int> Next();
    std::optional<int> NextChildOf(qint16 index);

private:
    friend class ConversionRecords;
    // `moved` gives the new position of each record, -1 of one that is dropped.
    void Follow(const std::vector<int>& moved);

    ConversionRecords& Records;
    int Place = 0;  // of the record in hand; where that was dropped, of the one before it
    int Last;
};

}  // namespace Sonmira
