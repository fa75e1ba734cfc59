#pragma once

namespace Sonmira {

class CollectionView;
struct Collection;

// Asks for files and adds each; remembers the folder for next time. A cancelled dialog, or a failure on
// the way, ends it at once and remembers nothing.
void AddFileDialog(Collection& collection, CollectionView& view);

}  // namespace Sonmira
