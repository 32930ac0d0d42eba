// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/TextLabel.h"

namespace loadscope {

TextLabel::TextLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : QLabel(parent), style_(style), color_(color) {
    setTextFormat(Qt::PlainText);
    setText(text);
    AppTheme::bind(this, [this] { applyTheme(); });
}

void TextLabel::setColor(ThemeColor color) {
    if (color == color_) return;
    color_ = color;
    applyTheme();
}

void TextLabel::setWeight(QFont::Weight weight) {
    weight_ = weight;
    applyTheme();
}

void TextLabel::setWraps() {
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextLabel::setSelectable() { setTextInteractionFlags(Qt::TextSelectableByMouse); }

void TextLabel::applyTheme() {
    const AppTheme& theme = AppTheme::current();
    setFont(weight_ ? theme.font(style_, *weight_) : theme.font(style_));
    QPalette palette = theme.palette();
    palette.setColor(QPalette::All, QPalette::WindowText, theme.color(color_));
    palette.setColor(QPalette::All, QPalette::Text, theme.color(color_));
    setPalette(palette);
}

} // namespace loadscope
