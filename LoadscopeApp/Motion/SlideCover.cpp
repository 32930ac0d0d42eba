// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/SlideCover.h"

#include "LoadscopeApp/Icons/Picture.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

namespace loadscope {
namespace {

constexpr double distance = 48;
constexpr int slideMilliseconds = 220;
constexpr int fadeMilliseconds = 120;

} // namespace

void SlideCover::start(QWidget* widget, const QPixmap& before, bool forward) {
    if (!widget->isVisible()) return;
    // A cover that is still running would be in the picture.
    delete widget->findChild<SlideCover*>(QString(), Qt::FindDirectChildrenOnly);
    const bool moves = !AppTheme::current().reducedMotion();
    const bool mirrored = widget->layoutDirection() == Qt::RightToLeft;
    const double way = !moves ? 0 : forward != mirrored ? distance : -distance;
    auto* cover = new SlideCover(widget, before, Picture::of(*widget), way);
    cover->animation()->fadeTo(1, moves ? slideMilliseconds : fadeMilliseconds);
}

SlideCover::SlideCover(QWidget* widget, const QPixmap& before, const QPixmap& after, double way)
    : TransitionCover(widget), before_(before), after_(after), way_(way) {}

void SlideCover::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::card));
    painter.setOpacity(1 - progress());
    painter.drawPixmap(QPointF(-way_ * progress(), 0), before_);
    painter.setOpacity(progress());
    painter.drawPixmap(QPointF(way_ * (1 - progress()), 0), after_);
}

} // namespace loadscope
