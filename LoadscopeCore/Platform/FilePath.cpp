// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/FilePath.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"

#include <algorithm>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#ifndef O_PATH
#define O_PATH O_RDONLY
#endif

namespace loadscope {

namespace {

/// As many links as the kernel follows in one path.
constexpr int maximumLinks = 40;

/// The non-empty components of a path, except ".".
std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> result;
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(component.size() + 1, path.size()));
        if (!component.empty() && component != ".") result.push_back(component);
    }
    return result;
}

/// Where resolving has come to: an absolute path without links and the links followed so far.
struct Resolution {
    std::string path = "/";
    int links = 0;

    /// Goes on by a component or by what it links to; false when there are too many links.
    bool append(std::string_view component);
};

bool Resolution::append(std::string_view component) {
    std::vector<std::string> pending{std::string(component)};
    while (!pending.empty()) {
        const std::string next = std::move(pending.back());
        pending.pop_back();
        if (next == "..") {
            path = FilePath::parent(path);
            continue;
        }
        std::string candidate = FilePath::joined(path, next);
        const std::optional<std::string> target = FilePath::linkTarget(candidate);
        if (!target) {
            path = std::move(candidate);
            continue;
        }
        if (++links > maximumLinks) return false;
        if (target->starts_with('/')) path = "/";
        const std::vector<std::string_view> parts = components(*target);
        pending.insert(pending.end(), parts.rbegin(), parts.rend());
    }
    return true;
}

} // namespace

std::string_view FilePath::withoutTrailingSeparators(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string FilePath::joined(std::string_view base, std::string_view name) {
    if (base.empty() || name.starts_with('/')) return std::string(name);
    if (name.empty()) return std::string(base);
    std::string result(withoutTrailingSeparators(base));
    if (result.back() != '/') result.push_back('/');
    result.append(name);
    return result;
}

std::string FilePath::standardized(std::string_view path) {
    if (path.empty()) return {};
    const bool isAbsolute = path.front() == '/';
    // Nearly every path has nothing to remove.
    if (isAbsolute && path.back() != '/' && path.find("//") == std::string_view::npos &&
        path.find("/.") == std::string_view::npos)
        return std::string(path);
    std::vector<std::string_view> kept;
    for (const std::string_view component : components(path)) {
        const bool isUp = component == "..";
        if (isUp && !kept.empty() && kept.back() != "..")
            kept.pop_back();
        else if (!isUp || !isAbsolute)
            kept.push_back(component);
    }
    std::string result;
    result.reserve(path.size());
    for (const std::string_view component : kept) {
        if (isAbsolute || !result.empty()) result.push_back('/');
        result.append(component);
    }
    if (result.empty()) return isAbsolute ? "/" : ".";
    return result;
}

std::string FilePath::resolved(std::string_view path) {
    if (path.empty()) return {};
    const std::string whole =
        standardized(path.front() == '/' ? std::string(path) : joined(UserFolders::current(), path));
    Resolution resolution;
    const std::vector<std::string_view> parts = components(whole);
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        Resolution next = resolution;
        if (next.append(*part)) {
            resolution = std::move(next);
            continue;
        }
        for (; part != parts.end(); ++part)
            resolution.path = joined(resolution.path, *part);
        break;
    }
    return resolution.path;
}

std::optional<std::string> FilePath::linkTarget(const std::string& path) {
    if (path.find('\0') != std::string::npos) return std::nullopt;
    std::string_view rest = path;
    FileDescriptor folder;
    // A path too long for the kernel is walked in pieces that are not.
    while (rest.size() >= PATH_MAX) {
        const std::size_t cut = rest.rfind('/', PATH_MAX - 1);
        if (cut == 0 || cut == std::string_view::npos) return std::nullopt;
        const std::string piece(rest.substr(0, cut));
        folder = FileDescriptor(::openat(folder.isOpen() ? folder.get() : AT_FDCWD, piece.c_str(),
                                         O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder.isOpen()) return std::nullopt;
        rest.remove_prefix(cut + 1);
    }
    const std::string name(rest);
    std::string target(256, '\0');
    while (true) {
        const ssize_t size = ::readlinkat(folder.isOpen() ? folder.get() : AT_FDCWD, name.c_str(),
                                          target.data(), target.size());
        if (size <= 0) return std::nullopt;
        if (static_cast<std::size_t>(size) < target.size()) {
            target.resize(static_cast<std::size_t>(size));
            return target;
        }
        target.resize(target.size() * 4);
    }
}

std::string FilePath::tildeExpanded(std::string_view path) {
    if (!path.starts_with('~')) return std::string(path);
    const std::string name(path.substr(1, path.find('/') - 1));
    const std::optional<std::string> home =
        name.empty() ? UserFolders::home() : UserFolders::homeOfUser(name);
    if (!home) return std::string(path);
    std::string_view rest = path.substr(1 + name.size());
    while (rest.starts_with('/'))
        rest.remove_prefix(1);
    return joined(*home, rest);
}

std::string FilePath::lastComponent(std::string_view path) {
    path = withoutTrailingSeparators(path);
    if (path == "/") return "/";
    return std::string(path.substr(path.rfind('/') + 1));
}

std::string FilePath::parent(std::string_view path) {
    path = withoutTrailingSeparators(path);
    const std::size_t separator = path.rfind('/');
    if (separator == std::string_view::npos) return {};
    return std::string(withoutTrailingSeparators(path.substr(0, std::max<std::size_t>(separator, 1))));
}

std::string FilePath::namePiece(std::string_view text) {
    constexpr std::size_t longest = 120; // of the 255 bytes that a name may have
    constexpr std::string_view forbidden = "/\\:*?\"<>|";
    std::string piece = Text::visible(text);
    std::replace_if(
        piece.begin(), piece.end(), [&](char one) { return forbidden.find(one) != std::string_view::npos; },
        '-');
    if (piece.size() <= longest) return piece;
    std::size_t end = longest;
    while ((static_cast<unsigned char>(piece[end]) & 0xC0U) == 0x80U) // inside of a character
        --end;
    piece.resize(end);
    return piece;
}

bool FilePath::isExecutableFile(const std::string& path) {
    struct stat status {};
    return path.find('\0') == std::string::npos && ::stat(path.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace loadscope
