// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/CharacterWidths.h"

#include <QHash>

#include <algorithm>

namespace loadscope {
namespace {

/// More fonts are only in use after many changes of the text scale.
constexpr qsizetype mostFonts = 32;

} // namespace

CharacterWidths::Table::Table(const QFont& font) : metrics(font) {
    advances.fill(-1);
    for (char16_t character = u'0'; character <= u'9'; ++character)
        digit = std::max(digit, metrics.horizontalAdvance(QChar(character)));
}

CharacterWidths::CharacterWidths(const QFont& font) {
    static QHash<QString, std::shared_ptr<Table>> tables;
    std::shared_ptr<Table>& known = tables[font.key()];
    if (known == nullptr) known = std::make_shared<Table>(font);
    table_ = known;
    if (tables.size() > mostFonts) tables.clear();
}

double CharacterWidths::measured(QChar character) const {
    return table_->advances[character.unicode()] = table_->metrics.horizontalAdvance(character);
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
