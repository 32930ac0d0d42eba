// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/MeasuredHeights.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QTextEdit>

namespace loadscope {

/// A text that may come from outside: it can be selected and copied, breaks anywhere when a word is longer
/// than the line, and is as high as it needs to be, up to a limit from which on it scrolls. Always plain
/// text.
class SelectableText : public QTextEdit {
    Q_OBJECT

public:
    explicit SelectableText(const QString& text, TextStyle style = TextStyle::body,
                            ThemeColor color = ThemeColor::primaryText, QWidget* parent = nullptr);

    [[nodiscard]] QString text() const { return toPlainText(); }
    void setText(const QString& text);
    /// Leading and trailing are those of the window, whatever the text's own direction.
    void setTextAlignment(Qt::Alignment alignment);
    /// From this height on the text scrolls.
    void setHeightLimit(int height);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();
    void applyLineSpacing();
    [[nodiscard]] int longestLine() const;
    [[nodiscard]] int measuredHeight(int width) const;
    /// The text or its looks are others now.
    void measureAgain();
    void updateScrolling();

    TextStyle style_;
    ThemeColor color_;
    int heightLimit_ = QWIDGETSIZE_MAX;
    mutable MeasuredHeights heights_; ///< without the limit
};

} // namespace loadscope
