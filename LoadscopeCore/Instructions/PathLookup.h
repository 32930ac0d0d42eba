// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace loadscope {

/// Finds out where paths lead and what is there, following symbolic links. Remembers the folders that it went
/// through, so that each costs one question to the file system however many paths share it: one lookup sees
/// one state of the folders. For use by one thread during one scan.
class PathLookup {
public:
    struct Location {
        std::string path; ///< without links; what does not exist is kept as it is
        int error = 0;    ///< the `errno` of asking for the attributes; 0 when they were read
        bool isFolder = false;
        bool isRegularFile = false;
    };

    /// Where an absolute, standardized path leads. A loop of links and a path that is too long for the system
    /// count as errors.
    [[nodiscard]] Location find(std::string_view path);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::unordered_map<std::string, Location, Hash, std::equal_to<>> folders_;
};

} // namespace loadscope
