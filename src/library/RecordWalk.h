#pragma once

#include <QtGlobal>

#include <optional>
#include <vector>

namespace Sonmira {

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
