#pragma once

#include <QByteArray>
#include <QString>

namespace Sonmira {

// Two ways to remove a file, both by its literal name (no wildcard), never a folder.

// Deletes outright; meant for temporary files. Fails with FileNotFound, PermissionDenied or
// PathFileAccess and leaves the file where it was.
void DeleteFileOutright(QStringView path);

// What becomes of a source that no trash takes.
enum class WithoutTrash { Delete, Keep };

struct SourceRemoval {
    enum class Place { Trash, Nowhere, Stays };
    Place Ends = Place::Stays;
    qint64 Size = 0;  // bytes
};

// Removes a file that the user owns: to the trash of its volume, else as a copy to that of the home folder,
// else as `otherwise` says. Fails like DeleteFileOutright.
SourceRemoval RemoveSourceFile(QStringView path, WithoutTrash otherwise);

// The desktop's trash: that of a file's volume, else the one of the home folder. Names are native ones.

// Moves a file, or a link itself, into the trash. Nothing is copied: false, and the file stays, where its
// volume has no trash that takes the name.
bool MoveToTrash(const QByteArray& native);

// Puts a regular file into the trash of the home folder, whatever its volume and however long its name, which
// is cut there. From another volume by a copy: the file goes when that has reached the disk. False, with the
// file and the trash as they were, where it cannot be done.
bool MoveToHomeTrash(const QByteArray& native);

}  // namespace Sonmira
