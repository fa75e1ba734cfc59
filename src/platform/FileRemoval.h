#pragma once

#include <QString>

// Two ways to remove a file, both by its literal name (no wildcard), never a folder.
namespace Sonmira {

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

}  // namespace Sonmira
