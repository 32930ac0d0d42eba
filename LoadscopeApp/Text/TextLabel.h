// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/MeasuredHeights.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QLabel>

#include <memory>
#include <optional>

class QPainter;
class QTextLayout;

namespace loadscope {

/// A text in one of the theme's styles and colours. Always plain text: what looks like markup is shown as it
/// is. A text that wraps has the generous line spacing of the theme and breaks anywhere when a word is longer
/// than the line.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(const QString& text, TextStyle style = TextStyle::body,
                       ThemeColor color = ThemeColor::primaryText, QWidget* parent = nullptr);
    ~TextLabel() override;

    /// A sentence in the secondary colour, on as many lines as it needs.
    [[nodiscard]] static TextLabel* note(const QString& text, TextStyle style = TextStyle::caption);
    /// The title of what follows below, semibold, and told as one.
    [[nodiscard]] static TextLabel* heading(const QString& text, TextStyle style = TextStyle::body,
                                            ThemeColor color = ThemeColor::primaryText);

    void setColor(ThemeColor color);
    void setWeight(QFont::Weight weight);
    /// Breaks the text over as many lines as it needs.
    void setWraps();
    /// Lets the mouse select the text.
    void setSelectable();

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();
    /// Lays the lines out in `width`, paints them at `top` when there is a painter, and returns their height.
    int layOutLines(int width, QPainter* painter, int top) const;
    /// The text in its font, whose letters are shaped once for all widths and paintings.
    [[nodiscard]] QTextLayout& shaped() const;
    /// Drops what was measured of another text or font.
    void forgetWhenChanged() const;
    [[nodiscard]] int naturalWidth() const;
    /// Whether a text that wraps has room in one line.
    [[nodiscard]] bool isOneLine(int width) const;
    /// Whether `lineSize` is the size the toolkit would find, which sets the text several times to find it.
    [[nodiscard]] bool isPlainLine() const;
    [[nodiscard]] QSize lineSize() const;
    [[nodiscard]] bool laysOutItself() const { return wordWrap() && !selectable_; }

    TextStyle style_;
    ThemeColor color_;
    std::optional<QFont::Weight> weight_;
    bool selectable_ = false;
    mutable MeasuredHeights heights_; ///< of the text and font below
    mutable std::optional<int> naturalWidth_;
    mutable std::unique_ptr<QTextLayout> shaped_;
    mutable QString measuredText_;
    mutable QFont measuredFont_;
};

} // namespace loadscope
