// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/PathLookup.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>

#ifndef O_PATH
#define O_PATH O_RDONLY
#endif

namespace loadscope {
namespace {

using Location = PathLookup::Location;

mode_t keepAttributes(const struct stat& status, Location& location) {
    location.isFolder = S_ISDIR(status.st_mode);
    location.isRegularFile = S_ISREG(status.st_mode);
    location.size = status.st_size;
    return status.st_mode;
}

/// 0 for a path that the system can be asked about, else why it cannot.
int errorOfAsking(std::string_view path) {
    if (path.size() >= PATH_MAX) return ENAMETOOLONG;
    return path.starts_with('/') && path.find('\0') == std::string_view::npos ? 0 : ENOENT;
}

} // namespace

PathLookup::PathLookup(const std::string& base) {
    const std::string path = FilePath::resolved(base);
    if (!path.starts_with('/') || path == "/") return;
    baseFolder_ = FileDescriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (baseFolder_.isOpen()) base_ = path + "/";
}

Location PathLookup::find(std::string_view path) {
    if (const int error = errorOfAsking(path); error != 0) return {std::string(path), error};
    Location location{"/", 0, true};
    if (path == "/") return location;
    std::size_t position = path.rfind('/');
    for (; position > 0; position = path.rfind('/', position - 1)) {
        const auto known = folders_.find(path.substr(0, position));
        if (known == folders_.end()) continue;
        location.path = known->second;
        break;
    }
    while (position < path.size()) {
        const std::size_t begin = position + 1;
        position = location.error == 0 ? std::min(path.find('/', begin), path.size()) : path.size();
        enter(location, path.substr(begin, position - begin));
        if (location.isFolder) folders_.emplace(path.substr(0, position), location.path);
    }
    return location;
}

Location PathLookup::findAndOpen(std::string_view path) {
    Location location{withFolderResolved(path)};
    location.isRegularFile = true;
    if (errorOfAsking(location.path) != 0) return find(path);
    location.error = open(location);
    if (location.error != 0 && location.error != ENOENT) return find(path);
    return location;
}

std::string PathLookup::withFolderResolved(std::string_view path) {
    const std::size_t separator = path.rfind('/');
    if (separator == std::string_view::npos || separator == 0) return std::string(path);
    const std::string_view folder = path.substr(0, separator);
    const auto known = folders_.find(folder);
    std::string result = known != folders_.end() ? known->second : find(folder).path;
    return result.append(path.substr(result == "/" ? separator + 1 : separator));
}

int PathLookup::open(Location& location) const {
    if (location.file.isOpen()) return 0;
    const Place place = placeOf(location.path);
    location.file = FileDescriptor(
        ::openat(place.folder, place.name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW | O_CLOEXEC));
    if (!location.file.isOpen()) return errno;
    struct stat status {};
    if (::fstat(location.file.get(), &status) != 0) return errno;
    keepAttributes(status, location);
    return 0;
}

PathLookup::Place PathLookup::placeOf(const std::string& path) const {
    if (base_.empty() || path.size() == base_.size() || !path.starts_with(base_))
        return {AT_FDCWD, path.c_str()};
    return {baseFolder_.get(), path.c_str() + base_.size()};
}

/// Completes a location whose path is known; returns the kind of what is there.
mode_t PathLookup::readAttributes(Location& location) const {
    struct stat status {};
    const Place place = placeOf(location.path);
    location.error = ::fstatat(place.folder, place.name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
    return keepAttributes(status, location);
}

/// Goes on into a folder; `names` are several only behind what does not exist.
void PathLookup::enter(Location& location, std::string_view names) const {
    if (location.path != "/") location.path += '/';
    location.path += names;
    if (location.error != 0 || !S_ISLNK(readAttributes(location))) return;
    location.path = FilePath::resolved(location.path);
    if (S_ISLNK(readAttributes(location))) location.error = ELOOP;
}

} // namespace loadscope
