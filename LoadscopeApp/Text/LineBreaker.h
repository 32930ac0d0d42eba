// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/CharacterWidths.h"

#include <QFontMetricsF>

#include <vector>

namespace loadscope {

/// A text on lines. Of one that would take too many lines something is left out.
struct BrokenText {
    struct Line {
        int start = 0;
        int length = 0;
    };

    QString shown;
    std::vector<Line> lines; ///< of `shown`
    int hiddenFrom = 0;      ///< where the ellipsis stands for what is left out
    int hidden = 0;          ///< how many characters are left out; 0 for nearly every text

    /// The position in the whole text of a position in what is shown.
    [[nodiscard]] int original(int position) const {
        return position <= hiddenFrom || hidden == 0 ? position : position + hidden - 1;
    }
};

/// Breaks texts of one font into lines: at words, and anywhere where a word is too long. Shaping thousands of
/// paths would take longer than a frame may, so texts of the Latin alphabets are broken by the widths of
/// their characters; all others the toolkit breaks.
class LineBreaker {
public:
    static constexpr int mostLines = 4;

    explicit LineBreaker(const QFont& font);

    /// In pixels, on one line.
    [[nodiscard]] double width(const QString& text) const;
    /// How many lines a text takes, at most `mostLines`. `natural` is its width on one line.
    [[nodiscard]] int lineCount(const QString& text, double natural, double room) const;
    [[nodiscard]] BrokenText broken(const QString& text, double room) const;
    /// One line, whose end is left out where it does not fit.
    [[nodiscard]] BrokenText cut(const QString& text, double room) const;

private:
    using Lines = std::vector<BrokenText::Line>;

    /// At most one line more than `mostLines`.
    [[nodiscard]] Lines lines(const QString& text, double room, bool anywhere) const;
    [[nodiscard]] Lines shapedLines(const QString& text, double room, bool anywhere) const;

    QFont font_;
    QFontMetricsF metrics_;
    CharacterWidths widths_;
};

} // namespace loadscope
