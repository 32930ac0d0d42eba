// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/MetricLine.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double wordGap = 8;
constexpr int narrowest = 80;

QString word() { return QStringLiteral("tokens"); }

QFont wordFont(TextStyle style) {
    return AppTheme::current().font(style == TextStyle::heroMetric ? TextStyle::headline : TextStyle::body,
                                    QFont::Normal);
}

QFont numberFont(TextStyle style) { return AppTheme::current().font(style, QFont::DemiBold); }

} // namespace

MetricLine::MetricLine(QString number, TextStyle style, QWidget* parent)
    : QWidget(parent), number_(std::move(number)), style_(style) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText, number_ + QLatin1Char(' ') + word());
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize MetricLine::sizeHint() const {
    const QFont font = numberFont(style_);
    const double width = TabularDigits::width(number_, font) + wordGap +
                         QFontMetricsF(wordFont(style_)).horizontalAdvance(word());
    return {static_cast<int>(std::ceil(width)) + 1,
            static_cast<int>(std::ceil(QFontMetricsF(font).height()))};
}

QSize MetricLine::minimumSizeHint() const { return {narrowest, sizeHint().height()}; }

void MetricLine::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const QFont words = wordFont(style_);
    const double wordWidth = QFontMetricsF(words).horizontalAdvance(word());
    const QFont numbers =
        ChartText::fitted(numberFont(style_), number_, std::max(1.0, width() - wordWidth - wordGap));
    const double numberWidth = TabularDigits::width(number_, numbers);
    const double baseline = QFontMetricsF(numberFont(style_)).ascent();
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QPainter painter(this);
    painter.setPen(theme.color(ThemeColor::primaryText));
    TabularDigits::paint(painter, {mirrored ? width() - numberWidth : 0, baseline}, number_, numbers);
    painter.setFont(words);
    painter.setPen(theme.color(ThemeColor::secondaryText));
    ReadingText::draw(
        painter,
        QPointF(mirrored ? width() - numberWidth - wordGap - wordWidth : numberWidth + wordGap, baseline),
        word());
}

} // namespace loadscope
