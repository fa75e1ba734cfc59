#include "library/Removal.h"

#include "library/Collection.h"

namespace Sonmira {

void MarkChildrenRemoved(ConversionRecords& records, int position) {
    // Positions whose children are still to be marked. A stack of our own: folders may lie deeper than calls
    // can nest.
    std::vector<int> folders{position};
    while (!folders.empty()) {
        const qint16 index = records[folders.back()].Index;
        folders.pop_back();
        // A folder beyond what 16 bits can number has the number 0, which is that of the root's children; it
        // must not take everything with it.
        if (index == 0) continue;
        for (const int child : records.ChildrenOf(index)) {
            // What is marked has been walked, or will be: shared numbers lead here twice.
            if (records[child].Removed) continue;
            records.MarkRemoved(child);
            if (!records[child].IsFile) folders.push_back(child);
        }
    }
}

void RemoveFromCollection(Collection& collection, CollectionView& view, const QString& path) {
    ConversionRecords& records = collection.Records;
    if (const std::optional<int> position = records.FirstWithPath(path)) {
        records.MarkRemoved(*position);
        MarkChildrenRemoved(records, *position);
    }
    records.Compact();
    RecountRecords(collection, view);
}

void RecountRecords(Collection& collection, CollectionView& view) {
    collection.FileCount = collection.DirectoryCount = 0;
    for (int position = 1; position <= collection.Records.UpperBound(); ++position) {
        const ConversionRecord& record = collection.Records[position];
        if (record.Removed) continue;
        ++(record.IsFile ? collection.FileCount : collection.DirectoryCount);
    }
    view.ShowDirectoryCount(collection.DirectoryCount);
    view.ShowFileCount(collection.FileCount);
}

}  // namespace Sonmira
