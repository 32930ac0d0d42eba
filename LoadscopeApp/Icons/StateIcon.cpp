// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Icons/StateIcon.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QPainter>

namespace loadscope {

StateIcon::StateIcon(const QString& symbol, ThemeColor tint, QWidget* parent)
    : QWidget(parent), tint_(tint), icon_(new IconView(symbol, Metrics::stateIconSymbol, tint)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AccessibleTraits::setDecoration(this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(icon_, 0, Qt::AlignCenter);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void StateIcon::setSpinning(bool spinning) { icon_->setSpinning(spinning); }

QSize StateIcon::sizeHint() const {
    const int side = AppTheme::current().scaled(Metrics::stateIconArea);
    return {side, side};
}

void StateIcon::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(tint_, Metrics::tintOpacity));
    painter.drawRoundedRect(rect(), Metrics::cardRadius, Metrics::cardRadius);
}

} // namespace loadscope
