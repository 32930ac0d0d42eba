// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include <array>
#include <memory>

namespace loadscope {

/// How wide the characters of the Latin alphabets are in a font. None of them changes another's shape, so
/// that a text's width is the sum of theirs; asking the font for whole texts shapes them each time, which is
/// far too slow for thousands. Each is measured once for each font, when it is first asked for. UI thread
/// only.
class CharacterWidths {
public:
    explicit CharacterWidths(const QFont& font);

    /// Whether this knows all characters of `text`.
    [[nodiscard]] static bool covers(const QString& text);

    [[nodiscard]] double of(QChar character) const {
        const double known = table_->advances[character.unicode()];
        return known >= 0 ? known : measured(character);
    }
    [[nodiscard]] double of(const QString& text) const;
    /// The width of the widest of the digits 0 to 9.
    [[nodiscard]] double digit() const { return table_->digit; }

private:
    static constexpr std::size_t count = 0x250;

    struct Table {
        explicit Table(const QFont& font);

        QFontMetricsF metrics;
        std::array<double, count> advances{}; ///< negative: not measured yet
        double digit = 0;
    };

    double measured(QChar character) const;

    std::shared_ptr<Table> table_;
};

} // namespace loadscope
