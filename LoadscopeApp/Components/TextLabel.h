// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/AppTheme.h"

#include <QLabel>

namespace loadscope {

/// A text in one of the theme's styles and colours. Always plain text: what looks like markup is shown as it
/// is.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(const QString& text, TextStyle style = TextStyle::body,
                       ThemeColor color = ThemeColor::primaryText, QWidget* parent = nullptr);

    void setColor(ThemeColor color);
    void setWeight(QFont::Weight weight);
    /// Breaks the text over as many lines as it needs.
    void setWraps();
    /// Lets the mouse select the text.
    void setSelectable();

private:
    void applyTheme();

    TextStyle style_;
    ThemeColor color_;
    std::optional<QFont::Weight> weight_;
};

} // namespace loadscope
