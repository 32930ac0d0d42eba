// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/DividerLine.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

namespace loadscope {

DividerLine::DividerLine(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
    AccessibleTraits::setRole(this, QAccessible::Separator);
    AppTheme::bind(this, [this] { update(); });
}

void DividerLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::divider));
}

} // namespace loadscope
