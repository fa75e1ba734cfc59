#pragma once

#include "platform/TemporaryCopy.h"

#include <functional>

namespace Sonmira {

// Changes a file so that a failure leaves it as it was: `change` works on a copy in the same folder, which
// then takes the file's place. Permissions and, where the system lets us, owner and extended attributes go
// over; a link stays a link. A file of several names changes under this one alone, as it does in the
// snapshots of backup programs. `file` is a native path. Fails as the system does (no room, no permission),
// where another program writes to the file or replaces it meanwhile, or as `change` does; the copy is gone
// then. It is gone, too, when the program dies on the way, at the latest with the next save in that folder.
void RewriteThroughCopy(const QByteArray& file, const std::function<void(const QByteArray& copy)>& change,
                        CopyName name = CopyName::NoneWherePossible);

}  // namespace Sonmira
