// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unordered_map>

namespace loadscope {

/// Finds out where paths lead and what is there, following symbolic links. Paths are absolute and
/// standardized. Remembers the folders that it went through, so that each costs one question to the file
/// system however many paths share it: one lookup sees one state of the folders. For use by one thread during
/// one scan.
class PathLookup {
public:
    struct Location {
        std::string path; ///< without links; what does not exist is kept as it is
        int error = 0;    ///< the `errno` of asking for the attributes; 0 when they were read
        bool isFolder = false;
        bool isRegularFile = false;
        std::int64_t size = 0; ///< bytes, by the attributes
        FileDescriptor file{}; ///< may be open when it is a regular file
    };

    /// `base` is the folder below which most paths lie: they are asked for from there, which spares the
    /// system the way to it each time. It may be anything; then every path is asked for as a whole.
    explicit PathLookup(const std::string& base = {});

    /// Where a path leads. A loop of links and a path that is too long for the system count as errors.
    [[nodiscard]] Location find(std::string_view path);

    /// `find` for a path that is probably to be read: tries to open it before it asks anything else.
    [[nodiscard]] Location findAndOpen(std::string_view path);

    /// The path with the links to its folder followed, but not itself; needs no question about itself.
    [[nodiscard]] std::string withFolderResolved(std::string_view path);

    /// Opens the regular file of a location for reading unless it is open, without ever waiting or following
    /// a link. The file is checked again once it is open: something else may have taken its place. An `errno`
    /// when it cannot be opened, else 0.
    int open(Location& location) const;

private:
    struct Place {
        int folder;
        const char* name;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    [[nodiscard]] Place placeOf(const std::string& path) const;
    mode_t readAttributes(Location& location) const;
    void enter(Location& location, std::string_view names) const;

    std::string base_; ///< with a separator behind it; empty without a base
    FileDescriptor baseFolder_;
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> folders_; ///< resolved, by path
};

} // namespace loadscope
