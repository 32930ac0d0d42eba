// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Texts from outside as the window shows them: control characters and bidirectional overrides are written
/// out, so that a name cannot pretend to be another one.
namespace loadscope::DisplayText {

/// For one line: a line feed is written out too.
[[nodiscard]] QString line(std::string_view bytes);

/// For several lines.
[[nodiscard]] QString paragraphs(std::string_view bytes);

/// Our own texts, which are UTF-8 and need no care.
[[nodiscard]] inline QString own(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace loadscope::DisplayText
