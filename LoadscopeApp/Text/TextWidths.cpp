// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/TextWidths.h"

#include <QFontMetricsF>
#include <QHash>

#include <utility>

namespace loadscope {
namespace {

/// Enough for the words of every page; beyond it all is forgotten and measured again.
constexpr qsizetype mostTexts = 4'096;
constexpr qsizetype longestText = 200;

} // namespace

double TextWidths::of(const QString& text, const QFont& font) {
    if (text.size() > longestText) return QFontMetricsF(font).horizontalAdvance(text);
    static QHash<std::pair<QFont, QString>, double> widths;
    const std::pair key(font, text);
    if (const auto known = widths.constFind(key); known != widths.constEnd()) return *known;
    if (widths.size() >= mostTexts) widths.clear();
    return *widths.insert(key, QFontMetricsF(font).horizontalAdvance(text));
}

} // namespace loadscope
