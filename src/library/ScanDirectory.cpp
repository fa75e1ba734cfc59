#include "library/ScanDirectory.h"

#include "library/AudioFileNames.h"
#include "library/Collection.h"
#include "library/CollectionView.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"

namespace Sonmira {

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
