// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Paths that are no UTF-8, which a JSON text cannot hold. As in a URL, what is no ASCII letter, digit, "/",
/// "-",
/// ".", "_" or "~" is written as "%" and two digits.
namespace loadscope::PathBytes {

/// Nothing when the path is UTF-8 and needs no such care.
[[nodiscard]] std::optional<std::string> encoded(std::string_view path);

/// The path that has this text and, if it was encoded, these bytes, without a separator at its end. Bytes of
/// another text are passed over: somebody changed one of the two.
[[nodiscard]] std::string path(std::string_view text, const std::optional<std::string>& encoded);

} // namespace loadscope::PathBytes
