// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Terminal.h"

#include <cerrno>
#include <cstdlib>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace loadscope {
namespace {

/// NO_COLOR counts when it is set to anything but nothing.
bool isSet(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

const char* sequence(TextStyle style) {
    switch (style) {
    case TextStyle::plain:
        return "";
    case TextStyle::bold:
        return "\x1b[1m";
    case TextStyle::dim:
        return "\x1b[2m";
    case TextStyle::good:
        return "\x1b[32m";
    case TextStyle::warning:
        return "\x1b[33m";
    case TextStyle::bad:
        return "\x1b[31m";
    }
    return "";
}

} // namespace

Terminal::Terminal(int descriptor) : descriptor_(descriptor), isTerminal_(isatty(descriptor) == 1) {
    const char* kind = std::getenv("TERM");
    overwrites_ = isTerminal_ && kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
    colours_ = overwrites_ && !isSet("NO_COLOR");
}

std::optional<std::size_t> Terminal::width() const {
    winsize size{};
    if (!isTerminal_ || ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
    return size.ws_col;
}

std::string Terminal::styled(TextStyle style, std::string_view text) const {
    if (!colours_ || style == TextStyle::plain || text.empty()) return std::string(text);
    return sequence(style) + std::string(text) + "\x1b[0m";
}

void Terminal::write(std::string_view text) {
    while (!text.empty() && !failed_) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            return;
        } else if (errno == EAGAIN) {
            pollfd ready{descriptor_, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            failed_ = true;
        }
    }
}

void Terminal::writeLine(std::string_view text) { write(std::string(text) + '\n'); }

void Terminal::showProgress(std::string_view text) {
    if (!isTerminal_ || text == progress_) return;
    progress_ = text;
    write(overwrites_ ? "\r\x1b[K" + styled(TextStyle::dim, text) : progress_ + '\n');
}

void Terminal::clearProgress() {
    if (!progress_.empty() && overwrites_) write("\r\x1b[K");
    progress_.clear();
}

} // namespace loadscope
