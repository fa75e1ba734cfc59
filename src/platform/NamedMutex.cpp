#include "platform/NamedMutex.h"

#include "platform/NarrowText.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

namespace Sonmira {

void CreateNamedMutex(QStringView name) {
    const QByteArray bytes = ToNarrow(name);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A zero byte in front makes the name abstract: it lives in no folder and goes with the process.
    const std::size_t length = std::min<std::size_t>(bytes.size(), sizeof address.sun_path - 1);
    std::memcpy(address.sun_path + 1, bytes.constData(), length);
    const int holder = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (holder < 0) return;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    // The socket of a name that was free stays open on purpose: the end of the process closes it.
    if (bind(holder, reinterpret_cast<const sockaddr*>(&address), size) != 0) close(holder);
}

}  // namespace Sonmira
