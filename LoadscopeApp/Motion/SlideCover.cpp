// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/SlideCover.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/Picture.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

namespace loadscope {
namespace {

constexpr double distance = 48;

} // namespace

void SlideCover::start(QWidget* widget, const QPixmap& before, bool forward, bool moves, int milliseconds) {
    if (!widget->isVisible()) return;
    // A cover that is still running would be in the picture.
    delete widget->findChild<SlideCover*>(QString(), Qt::FindDirectChildrenOnly);
    const bool mirrored = widget->layoutDirection() == Qt::RightToLeft;
    auto* cover = new SlideCover(widget, before, moves ? (forward != mirrored ? distance : -distance) : 0);
    cover->progress_.setDuration(milliseconds);
    cover->progress_.start();
}

SlideCover::SlideCover(QWidget* widget, const QPixmap& before, double way)
    : QWidget(widget), before_(before), after_(Picture::of(*widget)), way_(way) {
    AccessibleTraits::setDecoration(this);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(widget->rect());
    progress_.setStartValue(0.0);
    progress_.setEndValue(1.0);
    progress_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&progress_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(&progress_, &QVariantAnimation::finished, this, [this] {
        hide();
        deleteLater();
    });
    raise();
    show();
}

void SlideCover::paintEvent(QPaintEvent*) {
    const double progress = progress_.currentValue().toDouble();
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::card));
    painter.setOpacity(1 - progress);
    painter.drawPixmap(QPointF(-way_ * progress, 0), before_);
    painter.setOpacity(progress);
    painter.drawPixmap(QPointF(way_ * (1 - progress), 0), after_);
}

} // namespace loadscope
