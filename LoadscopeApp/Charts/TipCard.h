// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/LineBreaker.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <vector>

class QPainter;

namespace loadscope {

/// What stands beside the mark that the pointer is over: a few texts below each other on a small card. A text
/// too long for the card breaks, and what still does not fit is left out in its middle.
class TipCard {
public:
    struct Text {
        QString words;
        TextStyle style = TextStyle::caption;
        QFont::Weight weight = QFont::Normal;
        ThemeColor color = ThemeColor::secondaryText;
        QString unit{}; ///< what `words` counts, if it is a number
    };

    /// In the theme's fonts of this moment; at most `widest` wide.
    TipCard(std::vector<Text> texts, double widest);

    [[nodiscard]] QSizeF size() const { return size_; }
    void paint(QPainter& painter, const QRectF& area) const;

private:
    struct Line {
        QString words;
        QFont font;
        ThemeColor color;
        QString unit;
    };

    void addLines(const Text& text, double room);
    [[nodiscard]] static double widthOf(const Line& line);
    static void paintLine(QPainter& painter, QPointF baseline, const Line& line);

    std::vector<Line> lines_;
    QSizeF size_;
};

} // namespace loadscope
