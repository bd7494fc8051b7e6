#include "Support/OrdinaryUser.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tavrin::test {
namespace {

// Capabilities are a thread's own (capabilities(7)); glibc has no wrapper for the two calls.
using Sets = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;
constexpr std::uint32_t kPassesOverModes = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_FOWNER;

Sets capabilities() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    Sets sets{};
    if (::syscall(SYS_capget, &header, sets.data()) != 0) throw std::runtime_error("capget");
    return sets;
}

void setLowEffective(std::uint32_t effective) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    Sets sets = capabilities();
    sets[0].effective = effective;
    if (::syscall(SYS_capset, &header, sets.data()) != 0) throw std::runtime_error("capset");
}

}  // namespace

OrdinaryUser::OrdinaryUser() : before_(capabilities()[0].effective) {
    setLowEffective(before_ & ~kPassesOverModes);
    if ((capabilities()[0].effective & kPassesOverModes) != 0) throw std::runtime_error("root's rights stay");
}

OrdinaryUser::~OrdinaryUser() {
    setLowEffective(before_);
}

}  // namespace tavrin::test
