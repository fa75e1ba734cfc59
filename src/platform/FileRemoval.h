#pragma once

#include <QString>

// Two ways to remove a file, both by its literal name (no wildcard), never a folder.
namespace Sonmira {

// Deletes outright; meant for temporary files. Fails with FileNotFound, PermissionDenied or
// PathFileAccess and leaves the file where it was.
void DeleteFileOutright(QStringView path);

// Removes a file that the user owns: to the desktop's trash where the file's volume has one that takes the
// name, else for good. Fails like DeleteFileOutright.
void RemoveSourceFile(QStringView path);

}  // namespace Sonmira
