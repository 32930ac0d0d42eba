// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/NumberLabel.h"

#include "LoadscopeApp/Text/CharacterWidths.h"
#include "LoadscopeApp/Text/ReadingText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>

#include <cmath>

namespace loadscope {
namespace {

bool isPlainDigit(QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); }

} // namespace

// Numbers of other scripts are shaped as a whole; their digits have one width in the usual fonts.

double TabularDigits::width(const QString& text, const QFont& font) {
    if (!CharacterWidths::covers(text)) return QFontMetricsF(font).horizontalAdvance(text);
    const CharacterWidths widths(font);
    double total = 0;
    for (const QChar character : text)
        total += isPlainDigit(character) ? widths.digit() : widths.of(character);
    return total;
}

void TabularDigits::paint(QPainter& painter, const QPointF& origin, const QString& text, const QFont& font) {
    painter.setFont(font);
    if (!CharacterWidths::covers(text)) {
        ReadingText::draw(painter, origin, text);
        return;
    }
    const CharacterWidths widths(font);
    double left = origin.x();
    for (const QChar character : text) {
        const double advance = widths.of(character);
        const double cell = isPlainDigit(character) ? widths.digit() : advance;
        painter.drawText(QPointF(left + (cell - advance) / 2, origin.y()), QString(character));
        left += cell;
    }
}

NumberLabel::NumberLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : LineLabel(text, style, color, parent) {}

void NumberLabel::setAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    update();
}

int NumberLabel::baseline() const {
    const QFontMetricsF metrics(textFont());
    return static_cast<int>(std::lround(metrics.ascent()));
}

QSize NumberLabel::sizeHint() const {
    const QFont font = textFont();
    return {static_cast<int>(std::ceil(TabularDigits::width(text(), font))) + 1,
            static_cast<int>(std::ceil(QFontMetricsF(font).height()))};
}

void NumberLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(textColor());
    const QFont font = textFont();
    const double width = TabularDigits::width(text(), font);
    const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), alignment_);
    double left = 0;
    if (alignment & Qt::AlignRight)
        left = this->width() - width;
    else if (alignment & Qt::AlignHCenter)
        left = (this->width() - width) / 2;
    const QFontMetricsF metrics(font);
    TabularDigits::paint(painter, {left, (height() - metrics.height()) / 2 + metrics.ascent()}, text(), font);
}

} // namespace loadscope
