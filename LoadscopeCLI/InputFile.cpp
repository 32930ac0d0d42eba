// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/InputFile.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/Json.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace loadscope::InputFile {
namespace {

constexpr const char* tooLarge = "is larger than a report can be (16 MB).";

Unreadable systemError(int error) {
    if (error == ENOENT || error == ENOTDIR) return {"does not exist."};
    if (error == EACCES || error == EPERM) return {"may not be read."};
    return {std::string("could not be read: ") + std::strerror(error) + '.'};
}

std::variant<std::string, Unreadable> readAll(int descriptor) {
    std::string text;
    std::array<char, 65536> piece{};
    for (;;) {
        const ssize_t count = ::read(descriptor, piece.data(), piece.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemError(errno);
        if (count == 0) return text;
        text.append(piece.data(), static_cast<std::size_t>(count));
        if (text.size() > Json::maximumSize) return Unreadable{tooLarge};
    }
}

} // namespace

std::variant<std::string, Unreadable> read(const std::string& path) {
    if (path == standardInput) return readAll(STDIN_FILENO);
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.isOpen()) return systemError(errno);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return systemError(errno);
    if (S_ISDIR(status.st_mode)) return Unreadable{"is a folder."};
    return readAll(file.get());
}

std::string nameOf(const std::string& path) { return path == standardInput ? "The standard input" : path; }

} // namespace loadscope::InputFile
