#pragma once

#include <QByteArray>

// The desktop's trash: that of a file's volume, else the one of the home folder. Names are native ones.
namespace Sonmira {

// Moves a file, or a link itself, into the trash. Nothing is copied: false, and the file stays, where its
// volume has no trash that takes the name.
bool MoveToTrash(const QByteArray& native);

// Puts a regular file into the trash of the home folder, whatever its volume and however long its name, which
// is cut there. From another volume by a copy: the file goes when that has reached the disk. False, with the
// file and the trash as they were, where it cannot be done.
bool MoveToHomeTrash(const QByteArray& native);

}  // namespace Sonmira
