#pragma once

#include <QStringList>

class QDropEvent;

namespace Sonmira {

// Takes a drag that carries files, and no other. Nothing is ever moved away from where it comes.
void AcceptFiles(QDropEvent& drag);

// Takes a drop and gives the inner paths of its files, in their order; what is no local file is left out.
QStringList DroppedPaths(QDropEvent& drop);

}  // namespace Sonmira
