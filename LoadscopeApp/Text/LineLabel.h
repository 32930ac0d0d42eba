// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QWidget>

#include <optional>

namespace loadscope {

/// One line of text in a style and a colour of the theme, told to assistive technologies as it is. Subclasses
/// say how it is measured and painted. It follows every change of the theme.
class LineLabel : public QWidget {
    Q_OBJECT

public:
    LineLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent);

    [[nodiscard]] const QString& text() const { return text_; }
    void setText(const QString& text);
    void setWeight(QFont::Weight weight);

protected:
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QColor textColor() const { return AppTheme::current().color(color_); }

private:
    void refresh();

    QString text_;
    TextStyle style_;
    ThemeColor color_;
    std::optional<QFont::Weight> weight_;
};

} // namespace loadscope
