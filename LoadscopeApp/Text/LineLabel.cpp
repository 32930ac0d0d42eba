// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/LineLabel.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"

namespace loadscope {

LineLabel::LineLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : QWidget(parent), text_(text), style_(style), color_(color) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    setAccessibleName(text);
    AppTheme::bind(this, [this] { refresh(); });
}

void LineLabel::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    refresh();
}

void LineLabel::setWeight(QFont::Weight weight) {
    weight_ = weight;
    refresh();
}

QFont LineLabel::textFont() const {
    const AppTheme& theme = AppTheme::current();
    return weight_ ? theme.font(style_, *weight_) : theme.font(style_);
}

void LineLabel::refresh() {
    updateGeometry();
    update();
}

} // namespace loadscope
