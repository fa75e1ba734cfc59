#include "library/AddFiles.h"

#include "library/AudioFileNames.h"
#include "library/Collection.h"
#include "library/CollectionView.h"
#include "library/ScanDirectory.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

namespace Sonmira {

namespace {

// Locks the inputs for as long as something is added and frees them whatever happens, so that a failure
// never leaves the window locked.
class AddingLock {
public:
    AddingLock(Collection& gathered, CollectionView& shown) : Items(gathered), View(shown) {
        View.SetControlsEnabled(false);
        Items.ScanRunning = true;
        Items.StopScan = false;
    }
    ~AddingLock() {
        Items.ScanRunning = false;
        View.SetControlsEnabled(true);
        View.ShowPath({});
    }
    AddingLock(const AddingLock&) = delete;
    AddingLock& operator=(const AddingLock&) = delete;

private:
    Collection& Items;
    CollectionView& View;
};

void AddFileUnderRoot(Collection& collection, CollectionView& view, const QString& path,
                      bool relativeFolderIsName) {
    if (collection.Records.HoldsPath(path)) return;
    ConversionRecord record;
    record.IsFile = true;
    record.Path = path;
    record.Name = FileNameOf(path);
    if (relativeFolderIsName) record.RelativeFolder = record.Name;
    const QString name = record.Name;
    Checked16(collection.Records.Append(std::move(record)));
    view.GetIcon(path);
    // A name without a dot has no image to go by: the record stays, without a node and uncounted.
    if (!name.contains(u'.')) return;
    view.ShowPath(path);
    view.ShowFileCount(++collection.FileCount);
    view.AddNode(RootKey.toString(), path, name, ExtensionOf(path));
}

void AddFolderUnderRoot(Collection& collection, CollectionView& view, const QString& path) {
    view.GetIcon4(path);
    if (collection.Records.HoldsFolder(path)) return;
    ConversionRecord record;
    record.Path = path;
    record.Name = FileNameOf(path);
    record.RelativeFolder = record.Name;
    const QString name = record.Name;
    const int position = collection.Records.Append(std::move(record));
    Checked16(position);
    view.AddNode(RootKey.toString(), path, name, FolderImageOf(path));
    view.ShowPath(path);
    view.ShowDirectoryCount(++collection.DirectoryCount);
    ScanDirectory(collection, view, path, position);
}

}  // namespace

void AddFileRecord(Collection& collection, CollectionView& view, const QString& path) {
    AddFileUnderRoot(collection, view, path, false);
}

void AddDirectory(Collection& collection, CollectionView& view, const QString& path) {
    const AddingLock lock(collection, view);
    // A node that cannot be made (its key is there already) leaves the record without one.
    PassOver([&] { AddFolderUnderRoot(collection, view, path); });
}

void AddDropped(Collection& collection, CollectionView& view, const QStringList& paths) {
    const AddingLock lock(collection, view);
    for (const QString& path : paths) {
        if (collection.StopScan) break;
        PassOver([&] {
            if (FolderExists(path)) {
                AddFolderUnderRoot(collection, view, path);
            } else if (IsDroppedAudioFile(path)) {
                AddFileUnderRoot(collection, view, path, true);
            }
        });
    }
}

}  // namespace Sonmira
