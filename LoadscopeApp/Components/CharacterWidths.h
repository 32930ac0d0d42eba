// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>

#include <array>
#include <memory>

namespace loadscope {

/// How wide the characters of the Latin alphabets are in a font. None of them changes another's shape, so
/// that a text's width is the sum of theirs; asking the font for whole texts shapes them each time, which is
/// far too slow for thousands. Measured once for each font. UI thread only.
class CharacterWidths {
public:
    explicit CharacterWidths(const QFont& font);

    /// Whether this knows all characters of `text`.
    [[nodiscard]] static bool covers(const QString& text);

    [[nodiscard]] double of(QChar character) const { return table_->advances[character.unicode()]; }
    [[nodiscard]] double of(const QString& text) const;
    /// The width of the widest of the digits 0 to 9.
    [[nodiscard]] double digit() const { return table_->digit; }

private:
    static constexpr std::size_t count = 0x250;

    struct Table {
        std::array<double, count> advances{};
        double digit = 0;
    };

    std::shared_ptr<const Table> table_;
};

} // namespace loadscope
