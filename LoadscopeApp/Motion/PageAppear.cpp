// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/PageAppear.h"

#include "LoadscopeApp/Icons/Picture.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QEvent>
#include <QPainter>

namespace loadscope {

void PageAppear::start(QWidget* page) {
    if (AppTheme::current().reducedMotion() || page->window()->isHidden()) return;
    new PageAppear(page); // owned by the page, deletes itself
}

PageAppear::PageAppear(QWidget* page) : TransitionCover(page), page_(page) {
    page->installEventFilter(this);
    animation()->animateTo(1, Metrics::pageAppearMilliseconds, QEasingCurve::OutQuad);
}

void PageAppear::step() {
    if (picture_.isNull() && progress() > 0) {
        // Only now: the page has been laid out, and the first frame did not wait for the picture.
        setVisible(false);
        picture_ = Picture::of(*page_);
        setVisible(true);
    }
    update();
}

void PageAppear::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::window));
    painter.setOpacity(progress());
    painter.drawPixmap(QPointF(0, Metrics::pageAppearShift * (1 - progress())), picture_);
}

bool PageAppear::eventFilter(QObject* watched, QEvent* event) {
    if (watched == page_ && event->type() == QEvent::Resize) {
        setGeometry(page_->rect());
        picture_ = {};
    }
    return TransitionCover::eventFilter(watched, event);
}

} // namespace loadscope
