#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Sonmira {

// For as long as it lives, write protection holds for this thread even where it runs as root, whom nothing
// stops otherwise.
class Unprivileged {
public:
    Unprivileged() {
        syscall(SYS_capget, &Header, Held);
        __user_cap_data_struct fewer[2] = {Held[0], Held[1]};
        fewer[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_FOWNER);
        syscall(SYS_capset, &Header, fewer);
    }
    ~Unprivileged() { syscall(SYS_capset, &Header, Held); }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    __user_cap_header_struct Header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct Held[2] = {};
};

}  // namespace Sonmira
