// This program offers nothing to the network. The one thing in it that listens is the toolkit's VNC platform, which
// people choose to see the window from a viewer; the toolkit's own settings let it listen on every address or not at
// all. So the call that settles the address is taken over here: "any address" becomes this computer's own.
//
// Linked into the program itself, this definition comes before the system's for every library.
#include <dlfcn.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>

namespace {

using Bind = int (*)(int, const sockaddr*, socklen_t);

int systemBind(int socket, const sockaddr* address, socklen_t length) {
    static const auto next = reinterpret_cast<Bind>(dlsym(RTLD_NEXT, "bind"));
    return next(socket, address, length);
}

int bindIPv4(int socket, const sockaddr* address) {
    sockaddr_in own{};
    std::memcpy(&own, address, sizeof own);
    if (own.sin_addr.s_addr == htonl(INADDR_ANY)) own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return systemBind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own);
}

// 127.0.0.1 written as an IPv6 address, where a viewer looks for it, unless the socket speaks IPv6 alone.
int bindIPv6(int socket, const sockaddr* address) {
    sockaddr_in6 own{};
    std::memcpy(&own, address, sizeof own);
    if (IN6_IS_ADDR_UNSPECIFIED(&own.sin6_addr)) {
        int only = 0;
        socklen_t size = sizeof only;
        getsockopt(socket, IPPROTO_IPV6, IPV6_V6ONLY, &only, &size);
        own.sin6_addr = in6addr_loopback;
        if (only == 0) {
            constexpr unsigned char mapped[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 127, 0, 0, 1};
            std::memcpy(&own.sin6_addr, mapped, sizeof mapped);
        }
    }
    return systemBind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own);
}

}  // namespace

extern "C" int bind(int socket, const sockaddr* address, socklen_t length) noexcept {
    if (address != nullptr && address->sa_family == AF_INET && length >= sizeof(sockaddr_in))
        return bindIPv4(socket, address);
    if (address != nullptr && address->sa_family == AF_INET6 && length >= sizeof(sockaddr_in6))
        return bindIPv6(socket, address);
    return systemBind(socket, address, length);
}
