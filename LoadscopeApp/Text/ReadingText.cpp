// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/ReadingText.h"

#include <QGuiApplication>
#include <QPainter>
#include <QStyle>

namespace loadscope {

ReadingText::Direction::Direction(QPainter& painter, const QString& text, int flags)
    : painter_(painter), before_(painter.layoutDirection()) {
    const Qt::LayoutDirection window =
        before_ == Qt::LayoutDirectionAuto ? QGuiApplication::layoutDirection() : before_;
    const Qt::Alignment wanted(flags & Qt::AlignHorizontal_Mask);
    const Qt::Alignment edge = QStyle::visualAlignment(window, wanted) & Qt::AlignHorizontal_Mask;
    flags_ = (flags & ~Qt::AlignHorizontal_Mask) | static_cast<int>(edge) | Qt::AlignAbsolute;
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

ReadingText::Direction::~Direction() { painter_.setLayoutDirection(before_); }

void ReadingText::draw(QPainter& painter, const QRectF& area, int flags, const QString& text) {
    const Direction direction(painter, text, flags);
    painter.drawText(area, direction.flags(), text);
}

void ReadingText::draw(QPainter& painter, const QPointF& origin, const QString& text) {
    const Direction direction(painter, text);
    painter.drawText(origin, text);
}

} // namespace loadscope
