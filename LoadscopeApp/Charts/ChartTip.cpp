// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartTip.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/TipCard.h"

#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int pointerGap = 14;
constexpr int widest = 420;

} // namespace

ChartTip::ChartTip(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    AccessibleTraits::setDecoration(this);
    hide();
}

void ChartTip::showAt(QPointF place, const QString& title, const QString& detail) {
    title_ = title;
    detail_ = detail;
    const QRect box = parentWidget()->rect();
    const QSize size = card(box.width()).size().toSize().boundedTo(box.size());
    QRect area(QPoint(static_cast<int>(place.x()) + pointerGap, static_cast<int>(place.y()) + pointerGap),
               size);
    if (area.right() > box.right()) area.moveRight(static_cast<int>(place.x()) - pointerGap);
    if (area.bottom() > box.bottom()) area.moveBottom(static_cast<int>(place.y()) - pointerGap);
    area.moveLeft(std::clamp(area.left(), 0, std::max(0, box.width() - size.width())));
    area.moveTop(std::clamp(area.top(), 0, std::max(0, box.height() - size.height())));
    setGeometry(area);
    update();
    show();
    raise();
}

TipCard ChartTip::card(double room) const {
    return {{{title_, TextStyle::caption, QFont::DemiBold, ThemeColor::primaryText}, {detail_}},
            std::min<double>(widest, room)};
}

void ChartTip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    card(parentWidget()->width()).paint(painter, rect());
}

} // namespace loadscope
