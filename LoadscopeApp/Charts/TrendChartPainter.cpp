// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChartPainter.h"

#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace loadscope::TrendChartPainter {
namespace {

using ChartShapes::point;
using ChartShapes::rect;
using Geometry = TrendChartGeometry;

constexpr double ruleOpacity = 0.5;
constexpr double labelPatchOpacity = 0.8;
constexpr double tooltipOpacity = 0.95;
constexpr double tooltipLineGap = 2;
constexpr double tooltipUnitGap = 4;

/// Lines one point wide are crisp only in the middle of a pixel.
double crisp(double coordinate) { return std::floor(coordinate) + 0.5; }

void paintAxes(QPainter& painter, const Geometry& geometry) {
    const AppTheme& theme = AppTheme::current();
    painter.setFont(theme.font(TextStyle::caption));
    const QRectF plot = rect(geometry.plot());
    for (const Geometry::Tick& tick : geometry.valueTicks()) {
        painter.setPen(QPen(theme.color(ThemeColor::divider), 1));
        const double y = crisp(tick.position);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
    painter.setPen(theme.color(ThemeColor::secondaryText));
    for (const auto* ticks : {&geometry.valueTicks(), &geometry.timeTicks()}) {
        for (const Geometry::Tick& tick : *ticks) {
            if (tick.rect)
                ReadingText::draw(painter, rect(*tick.rect), Qt::AlignCenter | Qt::TextDontClip,
                                  DisplayText::own(tick.label));
        }
    }
}

void paintThresholdRules(QPainter& painter, const Geometry& geometry) {
    const AppTheme& theme = AppTheme::current();
    const QRectF plot = rect(geometry.plot());
    for (const Geometry::Threshold& threshold : geometry.thresholds()) {
        QPen pen(theme.color(ThemeColors::text(threshold.band)), 1);
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({Geometry::thresholdDash, Geometry::thresholdDash});
        painter.setPen(pen);
        const double y = crisp(threshold.y);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
}

void paintThresholdLabels(QPainter& painter, const Geometry& geometry) {
    const AppTheme& theme = AppTheme::current();
    painter.setFont(theme.font(TextStyle::caption, QFont::Medium));
    for (const Geometry::Threshold& threshold : geometry.thresholds()) {
        const QRectF area = rect(threshold.labelRect);
        // Between the words, too, a line must not look like a part of the text.
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.color(ThemeColor::card, labelPatchOpacity));
        painter.drawRoundedRect(area, Metrics::barRadius, Metrics::barRadius);
        painter.setPen(theme.color(ThemeColors::text(threshold.band)));
        ChartText::paintWithHalo(painter, area, DisplayText::own(threshold.label),
                                 theme.color(ThemeColor::card));
    }
}

void paintChangeLines(QPainter& painter, const Geometry& geometry, const std::vector<std::size_t>& palette) {
    const AppTheme& theme = AppTheme::current();
    for (const Geometry::Change& change : geometry.changes()) {
        QPen pen(theme.chartColor(palette.at(change.series)), 1);
        pen.setCapStyle(Qt::FlatCap);
        if (!change.isMajor) pen.setDashPattern({Geometry::changeDash, Geometry::changeDash});
        painter.setPen(pen);
        const double x = crisp(change.top.x);
        painter.drawLine(QPointF(x, change.top.y), QPointF(x, geometry.plot().bottom()));
    }
}

void paintChangeLabels(QPainter& painter, const Geometry& geometry) {
    const AppTheme& theme = AppTheme::current();
    painter.setFont(theme.font(TextStyle::caption));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    for (const Geometry::Change& change : geometry.changes()) {
        if (change.labelRect)
            ReadingText::draw(painter, rect(*change.labelRect), Qt::AlignCenter | Qt::TextDontClip,
                              DisplayText::own(change.label));
    }
}

void paintPoint(QPainter& painter, const Geometry::Mark& mark, double radius, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(point(mark.position), radius, radius);
}

} // namespace

void paint(QPainter& painter, const Geometry& geometry, const std::vector<std::size_t>& palette) {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    paintAxes(painter, geometry);
    paintThresholdRules(painter, geometry);
    paintChangeLines(painter, geometry, palette);
    painter.setBrush(Qt::NoBrush);
    for (std::size_t series = 0; series < geometry.lines().size(); ++series) {
        const Geometry::Line& line = geometry.lines()[series];
        QPainterPath path(point(line.start));
        for (const CurveSegment& segment : line.segments)
            path.cubicTo(point(segment.control1), point(segment.control2), point(segment.end));
        painter.strokePath(path, QPen(theme.chartColor(palette.at(series)), Geometry::lineWidth,
                                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    for (const Geometry::Mark& mark : geometry.marks())
        paintPoint(painter, mark, Geometry::pointRadius, theme.chartColor(palette.at(mark.series)));
    paintThresholdLabels(painter, geometry);
    paintChangeLabels(painter, geometry);
}

void paintSelection(QPainter& painter, const Geometry& geometry, const Geometry::Mark& mark,
                    const std::vector<std::size_t>& palette) {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme.color(ThemeColor::secondaryText, ruleOpacity), 1));
    const double x = crisp(mark.position.x);
    painter.drawLine(QPointF(x, geometry.plot().y), QPointF(x, geometry.plot().bottom()));
    paintPoint(painter, mark, Geometry::selectedPointRadius, theme.chartColor(palette.at(mark.series)));
}

double tooltipHeight(std::size_t conditionLines) {
    const AppTheme& theme = AppTheme::current();
    const double caption = QFontMetricsF(theme.font(TextStyle::caption)).height();
    const double height = caption + QFontMetricsF(theme.font(TextStyle::headline)).height() +
                          QFontMetricsF(theme.font(TextStyle::caption, QFont::Medium)).height() +
                          2 * tooltipLineGap +
                          static_cast<double>(conditionLines) * (caption + tooltipLineGap);
    return std::ceil(height) + 2 * Geometry::tooltipPadding;
}

QSizeF tooltipSize(const TrendsPresentation::Tooltip& tooltip) {
    const AppTheme& theme = AppTheme::current();
    const QFontMetricsF caption(theme.font(TextStyle::caption));
    const QFontMetricsF medium(theme.font(TextStyle::caption, QFont::Medium));
    const QFont headline = theme.font(TextStyle::headline);
    const double total = TabularDigits::width(DisplayText::own(tooltip.total), headline) + tooltipUnitGap +
                         caption.horizontalAdvance(QStringLiteral("tokens"));
    double width = std::max({caption.horizontalAdvance(DisplayText::own(tooltip.heading)), total,
                             medium.horizontalAdvance(DisplayText::own(tooltip.bandTitle))});
    for (const std::string& line : tooltip.conditions)
        width = std::max(width, caption.horizontalAdvance(DisplayText::own(line)));
    return {std::ceil(width) + 2 * Geometry::tooltipPadding, tooltipHeight(tooltip.conditions.size())};
}

void paintTooltip(QPainter& painter, const QRectF& area, const TrendsPresentation::Tooltip& tooltip) {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(theme.color(ThemeColor::card, tooltipOpacity));
    painter.setPen(QPen(theme.color(ThemeColor::border), 1));
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), Metrics::controlRadius,
                            Metrics::controlRadius);

    const QFont caption = theme.font(TextStyle::caption);
    const QFont headline = theme.font(TextStyle::headline);
    const QFont medium = theme.font(TextStyle::caption, QFont::Medium);
    QPointF baseline(area.left() + Geometry::tooltipPadding,
                     area.top() + Geometry::tooltipPadding + QFontMetricsF(caption).ascent());
    painter.setFont(caption);
    painter.setPen(theme.color(ThemeColor::secondaryText));
    ReadingText::draw(painter, baseline, DisplayText::own(tooltip.heading));

    baseline.ry() += QFontMetricsF(caption).descent() + tooltipLineGap + QFontMetricsF(headline).ascent();
    const QString total = DisplayText::own(tooltip.total);
    painter.setPen(theme.color(ThemeColor::primaryText));
    TabularDigits::paint(painter, baseline, total, headline);
    painter.setFont(caption);
    ReadingText::draw(painter, baseline + QPointF(TabularDigits::width(total, headline) + tooltipUnitGap, 0),
                      QStringLiteral("tokens"));

    baseline.ry() += QFontMetricsF(headline).descent() + tooltipLineGap + QFontMetricsF(medium).ascent();
    painter.setFont(medium);
    painter.setPen(theme.color(ThemeColors::text(tooltip.band)));
    ReadingText::draw(painter, baseline, DisplayText::own(tooltip.bandTitle));

    painter.setFont(caption);
    painter.setPen(theme.color(ThemeColor::secondaryText));
    double descent = QFontMetricsF(medium).descent();
    for (const std::string& line : tooltip.conditions) {
        baseline.ry() += descent + tooltipLineGap + QFontMetricsF(caption).ascent();
        descent = QFontMetricsF(caption).descent();
        ReadingText::draw(painter, baseline, DisplayText::own(line));
    }
}

} // namespace loadscope::TrendChartPainter
