// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/Text.h"

#include <cerrno>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace loadscope::TranscriptReader {

namespace {

constexpr std::size_t pieceSize = 65536;

std::optional<ProbeUsage> usageInLine(std::string_view line) {
    line = Text::trimmed(line);
    if (line.empty()) return std::nullopt;
    const auto json = Json::parse(line);
    if (!json) return std::nullopt;
    const Json::Value* type = Json::member(*json, "type");
    if (!type || *type != "assistant") return std::nullopt;
    const Json::Value* message = Json::objectMember(*json, "message");
    const Json::Value* usage = message ? Json::objectMember(*message, "usage") : nullptr;
    return usage ? ProbeUsage::from(*usage) : std::nullopt;
}

/// Opens a regular file, links followed; a FIFO or a device is not opened for longer than it takes to notice.
FileDescriptor openRegularFile(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (file.isOpen() && (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))) file.close();
    return file;
}

/// Appends up to one piece to the buffer; false at the end of the file and on an error.
bool appendPiece(const FileDescriptor& file, std::string& buffer) {
    const std::size_t size = buffer.size();
    buffer.resize(size + pieceSize);
    ssize_t count = 0;
    do {
        count = ::read(file.get(), buffer.data() + size, pieceSize);
    } while (count < 0 && errno == EINTR);
    buffer.resize(size + static_cast<std::size_t>(count > 0 ? count : 0));
    return count > 0;
}

} // namespace

std::optional<ProbeUsage> firstAssistantUsageAtPath(const std::string& path) {
    const FileDescriptor file = openRegularFile(path);
    if (!file.isOpen()) return std::nullopt;

    std::string buffer;
    std::size_t searchedUpTo = 0; // of a line that spans pieces, so that no byte is looked at twice
    while (appendPiece(file, buffer)) {
        std::size_t lineStart = 0;
        std::size_t lineEnd = buffer.find('\n', searchedUpTo);
        while (lineEnd != std::string::npos) {
            const std::string_view line = std::string_view(buffer).substr(lineStart, lineEnd - lineStart);
            if (auto usage = usageInLine(line)) return usage;
            lineStart = lineEnd + 1;
            lineEnd = buffer.find('\n', lineStart);
        }
        buffer.erase(0, lineStart);
        searchedUpTo = buffer.size();
    }
    return usageInLine(buffer);
}

std::optional<ProbeUsage> firstAssistantUsageInTranscript(std::string_view text) {
    LineBreaks::Walker walker(text);
    while (walker.advance()) {
        if (auto usage = usageInLine(walker.line())) return usage;
    }
    return std::nullopt;
}

} // namespace loadscope::TranscriptReader
