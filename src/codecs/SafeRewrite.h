#pragma once

#include <QByteArray>

#include <functional>

namespace Sonmira {

// Changes a file so that a failure leaves it as it was: `change` works on a copy in the same folder, which
// then takes the file's place. Permissions and, where the system lets us, owner and extended attributes go
// over; a link stays a link. `file` is a native path. Fails as the system does (no room, no permission) or as
// `change` does; the copy is gone then.
void RewriteThroughCopy(const QByteArray& file, const std::function<void(const QByteArray& copy)>& change);

}  // namespace Sonmira
