#include "library/AddFiles.h"

#include "library/AudioFileNames.h"
#include "library/Collection.h"
#include "platform/Failure.h"
#include "platform/Folders.h"
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

namespace {

class Scan {
public:
    Scan(Collection& gathered, CollectionView& shown) : Items(gathered), View(shown) {}

    void Walk(const QString& path, int parentPosition) {
        const std::optional<FolderIdentity> identity = IdentityOf(path);
        if (!identity || std::find(Way.begin(), Way.end(), *identity) != Way.end()) return;
        Way.push_back(*identity);
        const QString folder = WithBackslash(path);
        for (const FolderEntry& entry : ListFolder(path)) {
            if (Items.StopScan) break;
            if (!entry.IsFolder) {
                if (IsScannedAudioFile(entry.Name)) AddFile(folder, entry.Name, parentPosition);
            } else {
                const int position = AddFolder(folder, entry.Name, parentPosition);
                Walk(folder + entry.Name, position);
                View.Yield();
            }
        }
        Way.pop_back();
    }

private:
    int AddRecord(const QString& folder, const QString& name, int parentPosition, bool isFile) {
        ConversionRecord record;
        record.IsFile = isFile;
        record.Path = folder + name;
        record.Name = name;
        PassOver([&] { record.Parent = Checked16(parentPosition); });
        PassOver([&] {
            const QString& above = Items.Records[parentPosition].RelativeFolder;
            record.RelativeFolder = above.isEmpty() ? name : WithBackslash(above) + name;
        });
        return Items.Records.Append(std::move(record));
    }

    void AddFile(const QString& folder, const QString& name, int parentPosition) {
        const QString path = folder + name;
        // Added by itself before, and not to be converted twice.
        if (Items.Records.HoldsSingleFile(path)) return;
        AddRecord(folder, name, parentPosition, true);
        PassOver([&] { View.GetIcon(path); });
        if (!name.contains(u'.')) return;
        PassOver([&] { View.ShowPath(path); });
        PassOver([&] { View.ShowFileCount(++Items.FileCount); });
        PassOver([&] { View.AddNode(Items.Records[parentPosition].Path, path, name, ExtensionOf(path)); });
    }

    int AddFolder(const QString& folder, const QString& name, int parentPosition) {
        const QString path = folder + name;
        const int position = AddRecord(folder, name, parentPosition, false);
        PassOver([&] { View.GetIcon4(path); });
        PassOver([&] { View.AddNode(Items.Records[parentPosition].Path, path, name, FolderImageOf(path)); });
        PassOver([&] { View.ShowDirectoryCount(++Items.DirectoryCount); });
        PassOver([&] { View.ShowPath(path); });
        return position;
    }

    Collection& Items;
    CollectionView& View;
    std::vector<FolderIdentity> Way;  // the folders between the root of the scan and the one in hand
};

}  // namespace

void ScanDirectory(Collection& collection, CollectionView& view, const QString& path, int parentPosition) {
    Scan(collection, view).Walk(path, parentPosition);
}

}  // namespace Sonmira
