#pragma once

#include "library/ConversionRecords.h"
#include "platform/Paths.h"

namespace Sonmira {

// Everything that the user has gathered, with the counts that stand below the tree and the two flags of
// a running scan. Owned by the window.
struct Collection {
    ConversionRecords Records;
    int DirectoryCount = 0;    // folder records
    int FileCount = 0;         // file records that have a node
    bool ScanRunning = false;  // a folder or a drop is being added
    bool StopScan = false;     // set by the cancel commands; heard between two entries
};

// The keys that the tree and its images go by.
inline constexpr QStringView RootKey = u"\\";
inline constexpr QStringView FolderImage = u"dossier";
inline constexpr QStringView DriveImage = u"disque";

// The image of a folder or drive.
inline QString FolderImageOf(const QString& path) {
    return (IsDriveRoot(path) ? DriveImage : FolderImage).toString();
}

// What adding shows of the collection. The main window shows a tree; the benchmarks show nothing.
class CollectionView {
public:
    virtual ~CollectionView() = default;

    // Sees to it that the tree has the image of a file's type, or of a folder or drive.
    virtual void GetIcon(const QString& path) = 0;
    virtual void GetIcon4(const QString& path) = 0;

    // Adds a node below the one whose key is `parentKey`. Fails with KeyNotUnique when the key is there
    // already and with KeyNotFound when the parent or the image is not.
    virtual void AddNode(const QString& parentKey, const QString& key, const QString& text,
                         const QString& imageKey) = 0;

    // The path in hand; the empty text clears it.
    virtual void ShowPath(const QString& path) = 0;
    virtual void ShowDirectoryCount(int count) = 0;
    virtual void ShowFileCount(int count) = 0;

    // Locks or frees the inputs while a folder or a drop is added.
    virtual void SetControlsEnabled(bool enabled) = 0;
    virtual void Yield() = 0;
};

}  // namespace Sonmira
