// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Instructions/PathLookup.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// Reads instruction files one after the other into one buffer, so that no contents outlive the next file.
/// Opens nothing but regular files and never blocks, whatever takes a file's place between the lookup and the
/// opening. For use by one thread.
class InstructionFileReader {
public:
    enum class Status {
        missing,    ///< nothing to count: absent, or not a regular file
        unreadable, ///< exists, but may not be read
        readable,
    };

    struct Result {
        Status status = Status::missing;
        std::int64_t byteCount = 0;             ///< size by the attributes, of a readable file
        std::optional<std::string_view> text{}; ///< valid until the next `read`; absent when not parsed
        bool isReadingDenied = false;           ///< a readable file whose contents were refused after all
    };

    /// Reads what `lookup` has found. A text of more than `maximumBytes` or one that is not UTF-8 is absent;
    /// its file is readable all the same.
    [[nodiscard]] Result read(const PathLookup& lookup, PathLookup::Location location,
                              std::size_t maximumBytes);

private:
    std::string buffer_;
};

} // namespace loadscope
