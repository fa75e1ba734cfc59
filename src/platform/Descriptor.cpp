#include "platform/Descriptor.h"

#include <unistd.h>

#include <cerrno>

namespace Sonmira {

Descriptor::~Descriptor() {
    Close();
}

int Descriptor::Close() {
    if (Value < 0) return 0;
    return ::close(std::exchange(Value, -1)) == 0 ? 0 : errno;
}

}  // namespace Sonmira
