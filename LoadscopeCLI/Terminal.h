// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

enum class TextStyle { plain, bold, dim, good, warning, bad };

/// One output of the command: a terminal, a pipe or a file. Knows whether colour and overwriting are welcome:
/// only on a terminal that is not "dumb", and colour only without NO_COLOR. Texts from outside must have gone
/// through `Text::visible`. Used on one thread.
class Terminal {
public:
    explicit Terminal(int descriptor);

    [[nodiscard]] bool isTerminal() const { return isTerminal_; }

    /// Columns, when it is a terminal that tells them.
    [[nodiscard]] std::optional<std::size_t> width() const;

    /// The text in a style where colour is used, else unchanged.
    [[nodiscard]] std::string styled(TextStyle style, std::string_view text) const;

    /// Writes everything. A reader that went away is no failure; any other error makes `failed` true.
    void write(std::string_view text);
    void writeLine(std::string_view text);

    /// Shows a line of progress in place of the one before; nothing unless it is a terminal.
    void showProgress(std::string_view text);
    void clearProgress();

    [[nodiscard]] bool failed() const { return failed_; }

private:
    int descriptor_;
    bool isTerminal_;
    bool overwrites_;
    bool colours_;
    bool failed_ = false;
    std::string progress_;
};

} // namespace loadscope
