#include "platform/ProcessEnd.h"

#include <unistd.h>

namespace Sonmira {

void EndProcessNow(int code) {
    _exit(code);
}

}  // namespace Sonmira
