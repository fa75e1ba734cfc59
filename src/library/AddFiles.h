#pragma once

#include <QStringList>

namespace Sonmira {

class CollectionView;
struct Collection;

// The ways into the collection. A duplicate is skipped in silence; files are not opened here, so that
// what cannot be decoded is found out by the run.

// Adds one file under the root. A record of that path, file or folder, ends it.
void AddFileRecord(Collection& collection, CollectionView& view, const QString& path);

// Adds a folder under the root with all that it holds. The inputs are locked meanwhile and always freed.
void AddDirectory(Collection& collection, CollectionView& view, const QString& path);

// Adds what was dropped on the tree, in the given order, under the root.
void AddDropped(Collection& collection, CollectionView& view, const QStringList& paths);

}  // namespace Sonmira
