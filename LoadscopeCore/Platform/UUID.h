// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// A universally unique identifier, kept as its canonical 36-character upper-case text.
class UUID {
public:
    /// A new random (version 4) identifier from the operating system's generator.
    [[nodiscard]] static UUID generate();

    /// One that only the content decides (version 8), the same on every machine. For telling apart what was
    /// kept, not for what must withstand an attack.
    [[nodiscard]] static UUID derived(std::string_view content);

    /// From the canonical text in any letter case; nothing for any other text.
    [[nodiscard]] static std::optional<UUID> parse(std::string_view text);

    [[nodiscard]] const std::string& text() const { return text_; }
    // NOLINTNEXTLINE(modernize-use-nullptr): a false alarm of version 14
    auto operator<=>(const UUID&) const = default;

private:
    explicit UUID(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] static UUID ofBytes(std::array<unsigned char, 16> bytes, unsigned char version);
    std::string text_;
};

} // namespace loadscope
