// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/PathLookup.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <sys/stat.h>

namespace loadscope {
namespace {

using Location = PathLookup::Location;

/// Completes a location whose path is known; returns the kind of what is there.
mode_t readAttributes(Location& location) {
    struct stat status {};
    location.error = ::lstat(location.path.c_str(), &status) == 0 ? 0 : errno;
    location.isFolder = S_ISDIR(status.st_mode);
    location.isRegularFile = S_ISREG(status.st_mode);
    return status.st_mode;
}

/// Goes on into a folder; `names` are several only behind what does not exist.
void enter(Location& location, std::string_view names) {
    if (location.path != "/") location.path += '/';
    location.path += names;
    if (location.error != 0 || !S_ISLNK(readAttributes(location))) return;
    location.path = FilePath::resolved(location.path);
    if (S_ISLNK(readAttributes(location))) location.error = ELOOP;
}

} // namespace

Location PathLookup::find(std::string_view path) {
    if (path.size() >= PATH_MAX) return {std::string(path), ENAMETOOLONG};
    if (!path.starts_with('/') || path.find('\0') != std::string_view::npos)
        return {std::string(path), ENOENT};
    Location location{"/", 0, true};
    if (path == "/") return location;
    std::size_t position = path.rfind('/');
    for (; position > 0; position = path.rfind('/', position - 1)) {
        const auto known = folders_.find(path.substr(0, position));
        if (known == folders_.end()) continue;
        location = known->second;
        break;
    }
    while (position < path.size()) {
        const std::size_t begin = position + 1;
        position = location.error == 0 ? std::min(path.find('/', begin), path.size()) : path.size();
        enter(location, path.substr(begin, position - begin));
        if (location.isFolder) folders_.emplace(path.substr(0, position), location);
    }
    return location;
}

} // namespace loadscope
