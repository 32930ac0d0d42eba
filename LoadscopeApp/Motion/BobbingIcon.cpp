// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/BobbingIcon.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

namespace loadscope {
namespace {

constexpr int reach = 5;
constexpr int bobMilliseconds = 1500;

} // namespace

BobbingIcon::BobbingIcon(const QString& symbol, int size, ThemeColor color, QWidget* parent)
    : QWidget(parent), symbol_(symbol), size_(size), color_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AccessibleTraits::setDecoration(this);
    bob_.setStartValue(0.0);
    bob_.setKeyValueAt(0.5, 1.0);
    bob_.setEndValue(0.0);
    bob_.setDuration(bobMilliseconds);
    bob_.setEasingCurve(QEasingCurve::InOutSine);
    bob_.setLoopCount(-1);
    connect(&bob_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    AppTheme::bind(this, [this] {
        updateMotion();
        update();
    });
}

QSize BobbingIcon::sizeHint() const {
    const int side = AppTheme::current().scaled(size_) + reach;
    return {side, side};
}

void BobbingIcon::updateMotion() {
    const bool moves = isVisible() && !AppTheme::current().reducedMotion();
    if (moves && bob_.state() != QAbstractAnimation::Running)
        bob_.start();
    else if (!moves)
        bob_.stop();
}

void BobbingIcon::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const double shift =
        bob_.state() == QAbstractAnimation::Running ? bob_.currentValue().toDouble() * reach : 0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const double side = theme.scaled(size_);
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    Icon::paint(painter, QRectF(shift, reach - shift, side, side), symbol_, theme.color(color_));
}

void BobbingIcon::showEvent(QShowEvent*) { updateMotion(); }

void BobbingIcon::hideEvent(QHideEvent*) { updateMotion(); }

} // namespace loadscope
