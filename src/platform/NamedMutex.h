#pragma once

#include <QStringView>

namespace Sonmira {

// Holds a name on this machine until the program ends, so that another program (an installer, say) can see
// that this one runs. Never waits; whether somebody else holds the name already is nobody's concern.
void CreateNamedMutex(QStringView name);

}  // namespace Sonmira
