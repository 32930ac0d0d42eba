// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/CharacterWidths.h"

#include <QFontMetricsF>
#include <QHash>

#include <algorithm>

namespace loadscope {
namespace {

/// More fonts are only in use after many changes of the text scale.
constexpr qsizetype mostFonts = 32;

} // namespace

CharacterWidths::CharacterWidths(const QFont& font) {
    static QHash<QString, std::shared_ptr<const Table>> tables;
    std::shared_ptr<const Table>& known = tables[font.key()];
    if (known == nullptr) {
        const QFontMetricsF metrics(font);
        auto table = std::make_shared<Table>();
        for (std::size_t code = 0; code < count; ++code)
            table->advances[code] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(code)));
        table->digit = *std::max_element(&table->advances['0'], &table->advances['9'] + 1);
        known = std::move(table);
    }
    table_ = known;
    if (tables.size() > mostFonts) tables.clear();
}

bool CharacterWidths::covers(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < count; });
}

double CharacterWidths::of(const QString& text) const {
    double total = 0;
    for (const QChar character : text)
        total += of(character);
    return total;
}

} // namespace loadscope
