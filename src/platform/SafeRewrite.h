#pragma once

#include "platform/Handles.h"

#include <QByteArray>

#include <functional>

struct stat;

namespace Sonmira {

// Whether a copy has a name while it is written. Without one it vanishes with the program, whatever ends
// that; some file systems (FAT, many on the network) have only files with names.
enum class CopyName { NoneWherePossible, Always };

// A new file beside the one whose place it is to take; gone unless it has taken that.
class TemporaryCopy {
public:
    // `folder` is a native path with a slash at its end.
    TemporaryCopy(QByteArray folder, CopyName name);
    ~TemporaryCopy();
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    // By this it can be opened, for as long as the object lives.
    QByteArray Path() const;

    void FillFrom(int source, qint64 size);
    // Owner, rights and extended attributes.
    void CopyAttributes(int source, const struct stat& status) const;
    // What was written by name is on the disk before the name changes hands.
    void SyncToDisk() const;
    // False where the file system made a file without a name, but gives it none.
    bool Replace(const QByteArray& file);

private:
    bool MakeUnnamed();
    void MakeNamed();
    bool TakeName();

    QByteArray Folder;
    QByteArray Name;  // empty for none
    Descriptor Handle;
};

// Removes from a folder the named copies of programs that have died.
void RemoveDeadCopies(const QByteArray& folder);

// Changes a file so that a failure leaves it as it was: `change` works on a copy in the same folder, which
// then takes the file's place. Permissions and, where the system lets us, owner and extended attributes go
// over; a link stays a link. A file of several names changes under this one alone, as it does in the
// snapshots of backup programs. `file` is a native path. Fails as the system does (no room, no permission),
// where another program writes to the file or replaces it meanwhile, or as `change` does; the copy is gone
// then. It is gone, too, when the program dies on the way, at the latest with the next save in that folder.
void RewriteThroughCopy(const QByteArray& file, const std::function<void(const QByteArray& copy)>& change,
                        CopyName name = CopyName::NoneWherePossible);

}  // namespace Sonmira
