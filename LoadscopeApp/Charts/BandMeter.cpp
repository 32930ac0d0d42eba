// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/BandMeter.h"

#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Geometry/Motion.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace loadscope {
namespace {

double springSeconds() {
    return Motion::springDuration(BandMeterGeometry::springResponse, BandMeterGeometry::springDamping);
}

QFont labelFont(bool isActive) {
    return AppTheme::current().font(TextStyle::caption, isActive ? QFont::DemiBold : QFont::Medium);
}

} // namespace

BandMeter::BandMeter(std::int64_t total, OpinionBand band, QWidget* parent)
    : MarkedWidget(QAccessible::Chart, parent),
      total_(total),
      band_(band),
      seconds_(new ValueAnimation(this, springSeconds(), [this](double) { update(); })) {
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(QStringLiteral("Band scale"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    AppTheme::bind(this, [this] {
        geometry_ = geometryFor(width());
        updateGeometry();
        update();
    });
}

BandMeterGeometry BandMeter::geometryFor(double width) const {
    // Measured in the widest of its fonts, so that no label can touch another.
    return {total_, band_, width, ChartText::measure(labelFont(true))};
}

double BandMeter::shownPosition() const {
    const double seconds = seconds_->value();
    if (seconds >= springSeconds()) return geometry_.markerPosition();
    return geometry_.markerPosition() *
           Motion::spring(seconds, BandMeterGeometry::springResponse, BandMeterGeometry::springDamping);
}

QSize BandMeter::sizeHint() const {
    constexpr int usualWidth = 320;
    return {usualWidth, static_cast<int>(std::ceil(geometry_.height()))};
}

int BandMeter::markCount() const {
    return static_cast<int>(1 + geometry_.labels().size() + geometry_.ticks().size());
}

MarkedWidget::Mark BandMeter::mark(std::size_t index) const {
    if (index == 0) {
        const QPointF center = ChartShapes::point(geometry_.markerCenter(shownPosition()));
        constexpr double radius = BandMeterGeometry::markerDiameter / 2;
        return {DisplayText::own(TokenTexts::count(total_)), DisplayText::own(OpinionBands::title(band_)),
                QRectF(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius)};
    }
    if (--index < geometry_.labels().size()) {
        const BandMeterGeometry::Label& label = geometry_.labels()[index];
        return {DisplayText::own(label.text), DisplayText::own(OpinionBands::range(label.band)),
                ChartShapes::rect(label.rect.value_or(RectF())), QAccessible::StaticText};
    }
    const BandMeterGeometry::Tick& tick = geometry_.ticks().at(index - geometry_.labels().size());
    return {DisplayText::own(tick.text),
            {},
            ChartShapes::rect(tick.rect.value_or(RectF())),
            QAccessible::StaticText};
}

void BandMeter::resizeEvent(QResizeEvent*) { geometry_ = geometryFor(width()); }

void BandMeter::showEvent(QShowEvent* event) {
    MarkedWidget::showEvent(event);
    seconds_->appear(static_cast<int>(springSeconds() * 1'000), QEasingCurve::Linear);
}

void BandMeter::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bar = ChartShapes::rect(geometry_.bar());
    QPainterPath round;
    round.addRoundedRect(bar, bar.height() / 2, bar.height() / 2);
    painter.setPen(Qt::NoPen);
    for (const BandMeterGeometry::Segment& segment : geometry_.segments()) {
        QPainterPath piece;
        piece.addRect(ChartShapes::rect(segment.rect));
        painter.setBrush(theme.color(ThemeColors::fill(segment.band)));
        painter.drawPath(round.intersected(piece));
    }
    constexpr double outline = 1.5;
    constexpr double outlineOpacity = 0.75;
    constexpr double radius = (BandMeterGeometry::markerDiameter - outline) / 2;
    painter.setBrush(theme.color(ThemeColor::knob));
    painter.setPen(QPen(theme.color(ThemeColor::shadow, outlineOpacity), outline));
    painter.drawEllipse(ChartShapes::point(geometry_.markerCenter(shownPosition())), radius, radius);

    for (const BandMeterGeometry::Label& label : geometry_.labels()) {
        if (!label.rect) continue;
        painter.setFont(labelFont(label.isActive));
        painter.setPen(
            theme.color(label.isActive ? ThemeColors::text(label.band) : ThemeColor::secondaryText));
        ReadingText::draw(painter, ChartShapes::rect(*label.rect).adjusted(-1, 0, 1, 0),
                          Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip,
                          DisplayText::own(label.text));
    }
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const QFont font = theme.font(TextStyle::caption);
    const double ascent = QFontMetricsF(font).ascent();
    for (const BandMeterGeometry::Tick& tick : geometry_.ticks()) {
        if (!tick.rect) continue;
        const QString text = DisplayText::own(tick.text);
        const double slack = tick.rect->width - TabularDigits::width(text, font);
        TabularDigits::paint(painter, {tick.rect->x + slack / 2, tick.rect->y + ascent}, text, font);
    }
}

} // namespace loadscope
