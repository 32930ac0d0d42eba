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

constexpr std::string_view outputBegin = "<local-command-stdout>";
constexpr std::string_view outputEnd = "</local-command-stdout>";

std::string_view textOf(const Json::Value* value) {
    return value && value->is_string() ? std::string_view(value->get_ref<const std::string&>())
                                       : std::string_view();
}

/// The message of a line of this type, unless it belongs to a helper beside the session.
const Json::Value* messageOf(const Json::Value& line, std::string_view type) {
    if (textOf(Json::member(line, "type")) != type) return nullptr;
    const Json::Value* sidechain = Json::member(line, "isSidechain");
    if (sidechain && sidechain->is_boolean() && sidechain->get<bool>()) return nullptr;
    return Json::objectMember(line, "message");
}

std::optional<ProbeUsage> usageInLine(std::string_view line) {
    line = Text::trimmed(line);
    if (line.empty()) return std::nullopt;
    const auto json = Json::parse(line);
    if (!json) return std::nullopt;
    const Json::Value* message = messageOf(*json, "assistant");
    const Json::Value* usage = message ? Json::objectMember(*message, "usage") : nullptr;
    return usage ? ProbeUsage::from(*usage) : std::nullopt;
}

/// The text of a message: its content, or that of the first piece of its content.
std::string_view contentOf(const Json::Value& message) {
    const Json::Value* content = Json::member(message, "content");
    if (content && content->is_array() && !content->empty()) content = Json::member(content->front(), "text");
    return textOf(content);
}

std::optional<Report> reportInLine(std::string_view line) {
    if (line.find("local-command-stdout") == std::string_view::npos) return std::nullopt;
    const auto json = Json::parse(Text::trimmed(line));
    const Json::Value* message = json ? messageOf(*json, "user") : nullptr;
    if (!message) return std::nullopt;
    std::string_view text = Text::trimmed(contentOf(*message));
    if (!text.starts_with(outputBegin)) return std::nullopt;
    text.remove_prefix(outputBegin.size());
    text = text.substr(0, text.rfind(outputEnd));
    const std::string_view version = textOf(Json::member(*json, "version"));
    return Report{std::string(text), version.empty() ? std::nullopt : std::optional<std::string>(version)};
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

/// What `read` makes of the first line of the file of which it makes something.
template <typename T>
std::optional<T> firstInFile(const std::string& path, std::optional<T> (*read)(std::string_view line)) {
    const FileDescriptor file = openRegularFile(path);
    if (!file.isOpen()) return std::nullopt;

    std::string buffer;
    std::size_t searchedUpTo = 0; // of a line that spans pieces, so that no byte is looked at twice
    bool isTooLong = false;       // the line whose end is in the buffer
    while (appendPiece(file, buffer)) {
        std::size_t lineStart = 0;
        std::size_t lineEnd = buffer.find('\n', searchedUpTo);
        while (lineEnd != std::string::npos) {
            const std::string_view line = std::string_view(buffer).substr(lineStart, lineEnd - lineStart);
            if (auto found = isTooLong ? std::nullopt : read(line)) return found;
            isTooLong = false;
            lineStart = lineEnd + 1;
            lineEnd = buffer.find('\n', lineStart);
        }
        buffer.erase(0, lineStart);
        if (buffer.size() > Json::maximumSize) {
            buffer.clear();
            isTooLong = true;
        }
        searchedUpTo = buffer.size();
    }
    return isTooLong ? std::nullopt : read(buffer);
}

} // namespace

std::optional<ProbeUsage> firstAssistantUsageAtPath(const std::string& path) {
    return firstInFile<ProbeUsage>(path, usageInLine);
}

std::optional<Report> reportAtPath(const std::string& path) {
    return firstInFile<Report>(path, reportInLine);
}

std::optional<ProbeUsage> firstAssistantUsageInTranscript(std::string_view text) {
    LineBreaks::Walker walker(text);
    while (walker.advance()) {
        if (auto usage = usageInLine(walker.line())) return usage;
    }
    return std::nullopt;
}

} // namespace loadscope::TranscriptReader
