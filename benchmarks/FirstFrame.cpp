// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// Preloaded into a program with a window: tells when it hands its first picture of a window's size to the X
// server, as nanoseconds of the monotonic clock on the descriptor that FIRST_FRAME_DESCRIPTOR names. So the
// programs that are measured need no code for it and are measured alike.
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <unistd.h>

// As the X client library passes them; its headers are not needed for more. Not in an unnamed namespace,
// which would hide the functions below.
struct Connection;
struct Cookie {
    unsigned int sequence;
};

namespace {

using PutImage = Cookie (*)(Connection*, std::uint8_t, std::uint32_t, std::uint32_t, std::uint16_t,
                            std::uint16_t, std::int16_t, std::int16_t, std::uint8_t, std::uint8_t,
                            std::uint32_t, const std::uint8_t*);
using PutSharedImage = Cookie (*)(Connection*, std::uint32_t, std::uint32_t, std::uint16_t, std::uint16_t,
                                  std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t, std::int16_t,
                                  std::int16_t, std::uint8_t, std::uint8_t, std::uint8_t, std::uint32_t,
                                  std::uint32_t);

int target = -1;

/// Icons and pointers are smaller.
bool isWindow(int width, int height) { return width >= 600 && height >= 400; }

void tell(int width, int height) {
    if (target < 0 || !isWindow(width, height)) return;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::int64_t nanoseconds = std::int64_t(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
    [[maybe_unused]] const ssize_t written = write(target, &nanoseconds, sizeof nanoseconds);
    close(target);
    target = -1;
}

/// From the library by name: the toolkit's plug-in loads it out of sight of those that are looked through.
template <typename Function>
Function original(const char* library, const char* name) {
    return reinterpret_cast<Function>(dlsym(dlopen(library, RTLD_LAZY), name));
}

__attribute__((constructor)) void start() {
    const char* descriptor = std::getenv("FIRST_FRAME_DESCRIPTOR");
    if (descriptor != nullptr) target = std::atoi(descriptor);
    // Not for the programs that the measured one starts.
    unsetenv("LD_PRELOAD");
}

} // namespace

extern "C" Cookie xcb_put_image(Connection* connection, std::uint8_t format, std::uint32_t drawable,
                                std::uint32_t context, std::uint16_t width, std::uint16_t height,
                                std::int16_t x, std::int16_t y, std::uint8_t leftPad, std::uint8_t depth,
                                std::uint32_t length, const std::uint8_t* data) {
    static const auto put = original<PutImage>("libxcb.so.1", "xcb_put_image");
    const Cookie cookie =
        put(connection, format, drawable, context, width, height, x, y, leftPad, depth, length, data);
    tell(width, height);
    return cookie;
}

extern "C" Cookie xcb_shm_put_image(Connection* connection, std::uint32_t drawable, std::uint32_t context,
                                    std::uint16_t totalWidth, std::uint16_t totalHeight,
                                    std::uint16_t sourceX, std::uint16_t sourceY, std::uint16_t width,
                                    std::uint16_t height, std::int16_t x, std::int16_t y, std::uint8_t depth,
                                    std::uint8_t format, std::uint8_t sendEvent, std::uint32_t segment,
                                    std::uint32_t offset) {
    static const auto put = original<PutSharedImage>("libxcb-shm.so.0", "xcb_shm_put_image");
    const Cookie cookie = put(connection, drawable, context, totalWidth, totalHeight, sourceX, sourceY, width,
                              height, x, y, depth, format, sendEvent, segment, offset);
    tell(width, height);
    return cookie;
}
