// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace loadscope {

/// What the window says when something that was asked for could not be done, or was. Names and paths are
/// told as they are.
struct Notice {
    std::string title;
    std::string message;

    [[nodiscard]] static Notice scanIsRunning();
    [[nodiscard]] static Notice historyNotDeleted();
    [[nodiscard]] static Notice fileNotSaved(std::string_view path);

    /// What came of an export, beside its button.
    [[nodiscard]] static std::string exported(std::string_view fileName);
    [[nodiscard]] static std::string notExported(std::string_view fileName);
    static constexpr const char* printed = "The report was handed to the printer.";

    bool operator==(const Notice&) const = default;
};

} // namespace loadscope
