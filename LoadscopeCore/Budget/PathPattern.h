// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// A pattern of paths below a folder: `*` and `?` stand for characters of one name, `**` for any number of
/// folders. Other characters mean themselves, and letters their own case.
class PathPattern {
public:
    /// Nothing for a pattern that could lead out of the folder: absolute, or with "..".
    [[nodiscard]] static bool isAllowed(std::string_view pattern);

    explicit PathPattern(std::string_view pattern);

    [[nodiscard]] bool matches(std::string_view relativePath) const;

    struct File {
        std::string path; ///< relative to the folder
        std::int64_t byteCount = 0;

        bool operator==(const File&) const = default;
    };

    /// The regular files below `folder` that the pattern matches, by path. Enters only folders in which one
    /// could lie, no ".git" unless the pattern names it, and follows no link. Looks at `mostEntries` names at
    /// most; `isComplete` tells whether that was all.
    struct Found {
        std::vector<File> files;
        bool isComplete = true;
    };
    [[nodiscard]] Found find(const std::string& folder) const;

    static constexpr std::size_t mostEntries = 1'000'000;

private:
    [[nodiscard]] bool matchFrom(std::size_t segment, const std::vector<std::string_view>& names,
                                 std::size_t name) const;
    /// Whether something below a folder of these names could match.
    [[nodiscard]] bool couldHold(const std::vector<std::string_view>& names) const;

    std::vector<std::string> segments_;
};

} // namespace loadscope
