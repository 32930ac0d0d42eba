// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/MissingInterpreter.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace loadscope::MissingInterpreter {
namespace {

/// What follows the last occurrence of the mark.
std::optional<std::string_view> after(std::string_view line, std::string_view mark) {
    const std::size_t found = line.rfind(mark);
    if (found == std::string_view::npos) return std::nullopt;
    return line.substr(found + mark.size());
}

std::optional<std::string_view> before(std::string_view line, std::string_view mark) {
    const std::size_t found = line.find(mark);
    if (found == std::string_view::npos) return std::nullopt;
    return line.substr(0, found);
}

/// The quotes that `env` sets depend on the language.
std::string_view withoutQuotes(std::string_view name) {
    constexpr std::array<std::string_view, 10> quotes{"'",      "\"",     "`",      "\u2018", "\u2019",
                                                      "\u201c", "\u201d", "\u201e", "\u00ab", "\u00bb"};
    for (const std::string_view quote : quotes) {
        if (name.starts_with(quote)) name.remove_prefix(quote.size());
        if (name.ends_with(quote)) name.remove_suffix(quote.size());
    }
    return name;
}

/// "env: 'node': No such file or directory", in any language, and as other systems have it.
std::optional<std::string_view> missedByEnv(std::string_view line) {
    if (!line.starts_with("env: ") && !line.starts_with("/usr/bin/env: ")) return std::nullopt;
    line.remove_prefix(line.find(' ') + 1);
    const std::size_t reason = line.rfind(": ");
    if (reason == std::string_view::npos) return std::nullopt;
    line = line.substr(0, reason);
    return after(line, "can't execute ").value_or(line);
}

/// "/bin/tool: /opt/node: bad interpreter: No such file or directory", or with the two the other way round.
std::optional<std::string_view> badInterpreter(std::string_view line) {
    constexpr std::string_view mark = ": bad interpreter: ";
    const auto reason = after(line, mark);
    if (!reason) return std::nullopt;
    if (reason->starts_with('/')) return before(*reason, ": ").value_or(*reason);
    const auto place = before(line, mark);
    return after(*place, ": ").value_or(*place);
}

/// "/bin/tool: 3: exec: node: not found"
std::optional<std::string_view> missedByExec(std::string_view line) {
    const auto rest = after(line, ": exec: ");
    return rest ? before(*rest, ": not found") : std::nullopt;
}

} // namespace

std::optional<std::string> inErrorText(std::string_view standardError) {
    LineBreaks::Walker walker(standardError);
    while (walker.advance()) {
        const std::string_view line = LineBreaks::trimmedLine(walker.line());
        for (const auto find : {missedByEnv, badInterpreter, missedByExec}) {
            const auto found = find(line);
            const std::string_view name = found ? withoutQuotes(Text::trimmed(*found)) : "";
            if (!name.empty()) return std::string(name);
        }
    }
    return std::nullopt;
}

std::optional<std::string> ofScript(const std::string& script) {
    const FileDescriptor file(::open(script.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(file.get(), bytes.data(), bytes.size());
    std::string_view line(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (!line.starts_with("#!")) return std::nullopt;
    line = Text::trimmedHorizontally(line.substr(2, line.find('\n') - 2));
    const std::string interpreter(line.substr(0, line.find_first_of(" \t")));
    if (interpreter.empty() || ::access(interpreter.c_str(), F_OK) == 0 || errno != ENOENT)
        return std::nullopt;
    return interpreter;
}

std::string detail(const std::string& tool, const std::string& interpreter, const std::string& searchPath) {
    if (interpreter.find('/') != std::string::npos)
        return "Could not start " + tool + ": its interpreter " + interpreter + " does not exist.";
    return "Could not start " + tool + ": its interpreter `" + interpreter +
           "` was not found. It lies outside the PATH that was used: " + searchPath;
}

} // namespace loadscope::MissingInterpreter
