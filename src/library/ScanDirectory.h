#pragma once

#include <QString>

namespace Sonmira {

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
