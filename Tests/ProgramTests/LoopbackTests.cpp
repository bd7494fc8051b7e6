// The guard of the network is linked into this program, as it is into the real one.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace tavrin {
namespace {

/// What a socket of that family is bound to, once it was bound to `address` and whatever port is free.
std::string boundTo(const sockaddr* address, socklen_t length, bool onlyIPv6 = false) {
    const int socket = ::socket(address->sa_family, SOCK_STREAM, 0);
    const int only = onlyIPv6 ? 1 : 0;
    if (address->sa_family == AF_INET6) setsockopt(socket, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only);
    std::string result = "refused";
    if (bind(socket, address, length) == 0) {
        sockaddr_storage bound{};
        socklen_t size = sizeof bound;
        getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &size);
        char text[INET6_ADDRSTRLEN] = "";
        const void* place = bound.ss_family == AF_INET
                                ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in*>(&bound)->sin_addr)
                                : &reinterpret_cast<const sockaddr_in6*>(&bound)->sin6_addr;
        result = inet_ntop(bound.ss_family, place, text, sizeof text);
    }
    close(socket);
    return result;
}

bool hasIPv6() {
    const int socket = ::socket(AF_INET6, SOCK_STREAM, 0);
    if (socket >= 0) close(socket);
    return socket >= 0;
}

TEST(Loopback, anyAddressBecomesThisComputersOwn) {
    sockaddr_in any{};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_ANY);

    EXPECT_EQ(boundTo(reinterpret_cast<const sockaddr*>(&any), sizeof any), "127.0.0.1");
}

TEST(Loopback, anyAddressOfBothFamiliesIsFoundAtTheOldOne) {
    // A machine without IPv6 refuses the socket, and there is nothing to turn.
    const bool served = hasIPv6();
    sockaddr_in6 any{};
    any.sin6_family = AF_INET6;
    any.sin6_addr = in6addr_any;

    EXPECT_EQ(boundTo(reinterpret_cast<const sockaddr*>(&any), sizeof any), served ? "::ffff:127.0.0.1" : "refused");
    EXPECT_EQ(boundTo(reinterpret_cast<const sockaddr*>(&any), sizeof any, true), served ? "::1" : "refused");
}

TEST(Loopback, aChosenAddressStays) {
    sockaddr_in chosen{};
    chosen.sin_family = AF_INET;
    inet_pton(AF_INET, "127.0.0.2", &chosen.sin_addr);

    EXPECT_EQ(boundTo(reinterpret_cast<const sockaddr*>(&chosen), sizeof chosen), "127.0.0.2");
}

}  // namespace
}  // namespace tavrin
