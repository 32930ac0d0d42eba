// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChartPainter.h"

#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <limits>

namespace loadscope::TrendChartPainter {
namespace {

using ChartShapes::point;
using ChartShapes::rect;
using Geometry = TrendChartGeometry;

constexpr double ruleOpacity = 0.5;
constexpr double labelPatchOpacity = 0.8;

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

void paintChosen(QPainter& painter, const Geometry::Mark& mark, const std::vector<std::size_t>& palette) {
    constexpr double ringWidth = 2;
    const double radius = Geometry::selectedPointRadius + ringWidth;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(AppTheme::current().chartColor(palette.at(mark.series)), ringWidth));
    painter.drawEllipse(ChartShapes::point(mark.position), radius, radius);
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

TipCard tooltip(const TrendsPresentation::Tooltip& tooltip) {
    std::vector<TipCard::Text> texts{{DisplayText::own(tooltip.heading)},
                                     {DisplayText::own(tooltip.total), TextStyle::headline, QFont::DemiBold,
                                      ThemeColor::primaryText, DisplayText::own(TokenTexts::unit)},
                                     {DisplayText::own(tooltip.bandTitle), TextStyle::caption, QFont::Medium,
                                      ThemeColors::text(tooltip.band)}};
    for (const std::string& line : tooltip.conditions)
        texts.push_back({DisplayText::own(line)});
    return {std::move(texts), std::numeric_limits<double>::infinity()};
}

} // namespace loadscope::TrendChartPainter
