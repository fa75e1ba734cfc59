#pragma once

#include <QString>
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

class CollectionView;
struct Collection;

// Walks one folder with all its subfolders and adds every folder and every audio file to the collection.
// `parentPosition` is the position of the folder's own record. Lets the event loop run after each finished
// subfolder, which is when a stop is heard. A file that stands directly under the root is passed over. A
// failing step is skipped and the next one runs, so that a node that cannot be made does not undo the record
// made before it. A folder reached through a link that leads back to a folder on the way is listed but not
// walked again.
void ScanDirectory(Collection& collection, CollectionView& view, const QString& path, int parentPosition);

}  // namespace Sonmira
