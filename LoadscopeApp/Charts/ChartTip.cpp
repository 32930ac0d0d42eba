// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartTip.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int inset = 8;
constexpr int lineGap = 2;
constexpr int pointerGap = 14;
constexpr int widest = 420;
constexpr int mostLines = 3;

constexpr int wrapping = Qt::TextWrapAnywhere | Qt::AlignLeft | Qt::AlignTop;

QFont titleFont() { return AppTheme::current().font(TextStyle::caption, QFont::DemiBold); }
QFont detailFont() { return AppTheme::current().font(TextStyle::caption); }

} // namespace

ChartTip::ChartTip(QWidget* chart) : QWidget(chart) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    AccessibleTraits::setDecoration(this);
    hide();
}

void ChartTip::showAt(QPointF place, const QString& title, const QString& detail) {
    title_ = title;
    detail_ = detail;
    const QRect box = parentWidget()->rect();
    const QFontMetrics titles(titleFont());
    const QFontMetrics details(detailFont());
    const int room = std::max(1, std::min(widest, box.width()) - 2 * inset);
    // A line that breaks anywhere leaves up to one character of its width unused.
    const int budget = std::max(room, mostLines * (room - titles.maxWidth() / 2));
    shownTitle_ = titles.elidedText(title, Qt::ElideMiddle, budget);
    const QSize titleSize =
        titles.boundingRect(QRect(0, 0, room, QWIDGETSIZE_MAX), wrapping, shownTitle_).size();
    const int width = std::min(room, std::max(titleSize.width(), details.horizontalAdvance(detail) + 1));
    const QSize size(std::min(box.width(), width + 2 * inset),
                     std::min(box.height(), titleSize.height() + lineGap + details.height() + 2 * inset));

    QRect card(QPoint(static_cast<int>(place.x()) + pointerGap, static_cast<int>(place.y()) + pointerGap),
               size);
    if (card.right() > box.right()) card.moveRight(static_cast<int>(place.x()) - pointerGap);
    if (card.bottom() > box.bottom()) card.moveBottom(static_cast<int>(place.y()) - pointerGap);
    card.moveLeft(std::clamp(card.left(), 0, std::max(0, box.width() - size.width())));
    card.moveTop(std::clamp(card.top(), 0, std::max(0, box.height() - size.height())));
    setGeometry(card);
    update();
    show();
    raise();
}

void ChartTip::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.color(ThemeColor::border));
    painter.setBrush(theme.color(ThemeColor::card));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Metrics::tileRadius,
                            Metrics::tileRadius);
    const QRect content = rect().adjusted(inset, inset, -inset, -inset);
    const int detailHeight = QFontMetrics(detailFont()).height();
    painter.setFont(titleFont());
    painter.setPen(theme.color(ThemeColor::primaryText));
    ReadingText::draw(painter, content.adjusted(0, 0, 0, -detailHeight - lineGap), wrapping, shownTitle_);
    painter.setFont(detailFont());
    painter.setPen(theme.color(ThemeColor::secondaryText));
    ReadingText::draw(
        painter, QRect(content.left(), content.bottom() + 1 - detailHeight, content.width(), detailHeight),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        painter.fontMetrics().elidedText(detail_, Qt::ElideRight, content.width()));
}

} // namespace loadscope
