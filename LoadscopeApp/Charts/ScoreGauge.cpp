// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ScoreGauge.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Geometry/GaugeGeometry.h"
#include "LoadscopeCore/Scoring/HealthScore.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double side = 100;
constexpr double inset = 5;
constexpr double thickness = 9;
constexpr double restOpacity = 0.22;
constexpr int countMilliseconds = 700;
constexpr int unitsPerDegree = 16;

} // namespace

ScoreGauge::ScoreGauge(int score, OpinionBand band, QWidget* parent)
    : QWidget(parent),
      score_(score),
      color_(ThemeColors::fill(band)),
      progress_(new ValueAnimation(this, 1, [this](double) { update(); })) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::Graphic, DisplayText::own(HealthScore::label(score)));
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

double ScoreGauge::shownScore() const { return GaugeGeometry::countingValue(score_, progress_->value()); }

QSize ScoreGauge::sizeHint() const {
    const int scaled = AppTheme::current().scaled(side);
    return {scaled, scaled};
}

void ScoreGauge::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    progress_->appear(countMilliseconds, QEasingCurve::Linear);
}

void ScoreGauge::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const double scale = width() / side;
    const RectF area = ChartShapes::rect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
    const GaugeGeometry gauge = GaugeGeometry::make(area, thickness * scale, shownScore());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring(gauge.center.x - gauge.radius, gauge.center.y - gauge.radius, 2 * gauge.radius,
                      2 * gauge.radius);
    const auto arc = [&painter, &ring, &gauge](const QColor& color, double sweep) {
        painter.setPen(QPen(color, gauge.thickness, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(ring, static_cast<int>((90 - GaugeGeometry::startAngle) * unitsPerDegree),
                        static_cast<int>(-sweep * unitsPerDegree));
    };
    arc(theme.color(color_, restOpacity), GaugeGeometry::sweep);
    if (gauge.valueSweep > 0) arc(theme.color(color_), gauge.valueSweep);

    const QString number = QString::number(std::lround(shownScore()));
    const QFont font = theme.font(TextStyle::title, QFont::Bold);
    const QFontMetricsF metrics(font);
    painter.setPen(theme.color(ThemeColor::primaryText));
    TabularDigits::paint(painter,
                         {gauge.center.x - TabularDigits::width(number, font) / 2,
                          gauge.center.y + (metrics.ascent() - metrics.descent()) / 2},
                         number, font);
    painter.setFont(theme.font(TextStyle::caption));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const double labelHeight = QFontMetricsF(painter.font()).height();
    ReadingText::draw(painter, QRectF(0, height() - labelHeight - inset, width(), labelHeight),
                      Qt::AlignCenter, QStringLiteral("Score"));
}

} // namespace loadscope
