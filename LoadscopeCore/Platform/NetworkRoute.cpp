// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/NetworkRoute.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace loadscope::NetworkRoute {
namespace {

/// Connecting a datagram socket only looks the route up. The addresses are reserved for documents.
bool leadsTo(const sockaddr* address, socklen_t size) {
    const FileDescriptor socket(::socket(address->sa_family, SOCK_DGRAM, 0));
    if (!socket.isOpen()) return false;
    ::fcntl(socket.get(), F_SETFD, FD_CLOEXEC);
    return ::connect(socket.get(), address, size) == 0;
}

} // namespace

bool exists() {
    sockaddr_in four{};
    four.sin_family = AF_INET;
    four.sin_port = htons(443);
    ::inet_pton(AF_INET, "192.0.2.1", &four.sin_addr);
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    six.sin6_port = htons(443);
    ::inet_pton(AF_INET6, "2001:db8::1", &six.sin6_addr);
    // NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast): the interface of sockets
    return leadsTo(reinterpret_cast<const sockaddr*>(&four), sizeof four) ||
           leadsTo(reinterpret_cast<const sockaddr*>(&six), sizeof six);
    // NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)
}

} // namespace loadscope::NetworkRoute
