// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionFileReader.h"

#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace loadscope {
namespace {

using Result = InstructionFileReader::Result;
using Status = InstructionFileReader::Status;

bool isPermissionDenial(int error) { return error == EACCES || error == EPERM; }

bool isAbsence(int error) { return error == ENOENT || error == ENOTDIR || error == ELOOP; }

/// What to make of a regular file that could not be opened.
Result unopened(const PathLookup::Location& location, int error) {
    if (isAbsence(error)) return {};
    if (::faccessat(AT_FDCWD, location.path.c_str(), R_OK, AT_EACCESS) != 0) return {Status::unreadable};
    return {Status::readable, location.size, {}, isPermissionDenial(error)};
}

/// Reads to the end of the file, but no more than one byte beyond `maximum`; an `errno` on failure.
/// `expected` is where the end is by the attributes; 0 when they do not tell, as of files that the kernel
/// makes up.
int readAll(int descriptor, std::string& buffer, std::size_t& size, std::size_t expected,
            std::size_t maximum) {
    constexpr std::size_t smallestBuffer = 65'536;
    for (size = 0; size <= maximum;) {
        if (size == buffer.size()) buffer.resize(std::max({smallestBuffer, expected + 1, 4 * size}));
        const std::size_t room = std::min(buffer.size(), maximum + 1) - size;
        const ssize_t count = ::read(descriptor, buffer.data() + size, room);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        size += static_cast<std::size_t>(count);
        if (count == 0 || (expected > 0 && size == expected)) break;
    }
    return 0;
}

} // namespace

Result InstructionFileReader::read(const PathLookup& lookup, PathLookup::Location location,
                                   std::size_t maximumBytes) {
    if (location.error != 0)
        return {isPermissionDenial(location.error) ? Status::unreadable : Status::missing};
    if (!location.isRegularFile) return {};
    if (const int error = lookup.open(location); error != 0) return unopened(location, error);
    if (!location.isRegularFile) return {};

    Result result{Status::readable, location.size};
    const auto expected = static_cast<std::size_t>(std::max<std::int64_t>(location.size, 0));
    if (expected > maximumBytes) return result;
    std::size_t size = 0;
    if (const int error = readAll(location.file.get(), buffer_, size, expected, maximumBytes); error != 0) {
        result.isReadingDenied = isPermissionDenial(error);
        return result;
    }
    const std::string_view text(buffer_.data(), size);
    // Only a text with an "@" is of use to anyone; the others need no check.
    const bool isUseful = size <= maximumBytes && text.find('@') != std::string_view::npos;
    if (isUseful && Text::isValidUTF8(text)) result.text = text;
    return result;
}

} // namespace loadscope
