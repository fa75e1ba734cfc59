#pragma once

#include <QString>

namespace Sonmira {

class ConversionRecords;
struct Collection;
class CollectionView;

// Marks everything below the folder at that position as removed: the records whose Parent is its number, and
// so on down. The stored numbers decide, also where two records share one.
void MarkChildrenRemoved(ConversionRecords& records, int position);

// Drops the first record of that path with everything below it, and counts anew.
void RemoveFromCollection(Collection& collection, CollectionView& view, const QString& path);

// Counts all files and folders anew, files without a node among them, and shows the counts.
void RecountRecords(Collection& collection, CollectionView& view);

}  // namespace Sonmira
