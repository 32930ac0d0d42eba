// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/AtomicFile.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace loadscope {

namespace {

/// Large enough to make system calls rare, small enough for systems that refuse more than 2 GiB in one.
constexpr std::size_t largestTransfer = std::size_t{1} << 24;

/// Name of the temporary files; mkostemp puts letters and digits for the X.
constexpr std::string_view temporaryName = ".loadscope-XXXXXX";

std::optional<std::string> readAll(int descriptor, std::size_t expected, std::size_t limit) {
    // One byte of room more than expected shows the end of the file, or that it has grown, in one call.
    std::string bytes(expected + 1, '\0');
    std::size_t size = 0;
    while (true) {
        if (size == bytes.size()) {
            if (size > limit) return std::nullopt;
            bytes.resize(size + std::min(std::max<std::size_t>(size, 4096), limit - size + 1));
        }
        const ssize_t count =
            ::read(descriptor, bytes.data() + size, std::min(bytes.size() - size, largestTransfer));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
    }
    if (size > limit) return std::nullopt;
    bytes.resize(size);
    return bytes;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), std::min(bytes.size(), largestTransfer));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Waits until the file's bytes are on the disk.
bool flush(int descriptor) {
#ifdef F_FULLFSYNC
    // fsync leaves them in the drive's cache there; file systems that cannot do better refuse this.
    if (::fcntl(descriptor, F_FULLFSYNC) == 0) return true;
#endif
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// The path behind symbolic links at `path` itself, which need not exist; nothing for a loop of links. Links
/// on the way to it are left to the system, whose idea of ".." is the right one.
std::optional<std::string> behindLinks(std::string path) {
    for (int links = 0; links < 40; ++links) {
        const std::optional<std::string> target = FilePath::linkTarget(path);
        if (!target) return path;
        path = FilePath::joined(FilePath::parent(path), *target);
    }
    return std::nullopt;
}

/// Whether a file may be put there: nothing is there yet, or a regular file. A device or a pipe is not ours
/// to replace.
bool isReplaceable(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

bool replace(const std::string& path, std::string_view bytes, const std::function<bool()>& isWanted) {
    if (path.find('\0') != std::string::npos) return false;
    const std::optional<std::string> target = behindLinks(path);
    if (!target || !isReplaceable(*target)) return false;
    const std::string parent = FilePath::parent(*target);
    const std::string folder = parent.empty() ? "." : parent;

    // mkostemp gives the mode 0600.
    std::string temporary = FilePath::joined(folder, temporaryName);
    FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.isOpen()) return false;
    const bool isWritten = writeAll(file.get(), bytes) && flush(file.get());
    file.close();
    if (!isWritten || !isWanted() || ::rename(temporary.c_str(), target->c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    // The file is replaced already; a file system that cannot flush folders does not make that untrue.
    if (const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        opened.isOpen())
        flush(opened.get());
    return true;
}

} // namespace

std::optional<std::string> AtomicFile::read(const std::string& path, std::size_t limit) {
    if (path.find('\0') != std::string::npos) return std::nullopt;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit) return std::nullopt;
    try {
        return readAll(file.get(), size, limit);
    } catch (const std::exception&) { // no memory for it
        return std::nullopt;
    }
}

bool AtomicFile::write(const std::string& path, std::string_view bytes) {
    return write(path, bytes, [] { return true; });
}

bool AtomicFile::write(const std::string& path, std::string_view bytes,
                       const std::function<bool()>& isWanted) {
    try {
        return replace(path, bytes, isWanted);
    } catch (const std::exception&) { // no memory for the paths
        return false;
    }
}

void AtomicFile::removeAbandoned(const std::string& folder, std::chrono::seconds age) {
    constexpr std::string_view prefix = temporaryName.substr(0, temporaryName.find('X'));
    const std::time_t newest = std::time(nullptr) - static_cast<std::time_t>(age.count());
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string path = entry->path().string();
        const std::string name = FilePath::lastComponent(path);
        struct stat status {};
        if (name.size() == temporaryName.size() && name.starts_with(prefix) &&
            ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_mtime <= newest)
            ::unlink(path.c_str());
    }
}

} // namespace loadscope
