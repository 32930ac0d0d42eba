// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/DonutChart.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr double side = 204;
constexpr double inset = 4;
constexpr double outerRingShare = 0.065; ///< of the side, with the gap to the ring
constexpr double outerRingGap = 2;
constexpr double middleShare = 0.86; ///< of the hole's width that the number may take
constexpr double wordGap = 5;
constexpr int revealMilliseconds = 600;

} // namespace

DonutChart::DonutChart(std::vector<Row> rows, QString total, bool hasOuterRing, QWidget* parent)
    : MarkedWidget(QAccessible::Chart, parent),
      rows_(std::move(rows)),
      total_(std::move(total)),
      hasOuterRing_(hasOuterRing),
      reveal_(new ValueAnimation(this, 1, [this](double) {
          layOut();
          update();
      })) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Breakdown by category"));
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        tokens_.push_back(rows_[row].tokens);
        if (rows_[row].tokens > 0) sectors_.push_back(row);
    }
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize DonutChart::sizeHint() const {
    const int scaled = AppTheme::current().scaled(side);
    return {scaled, scaled};
}

void DonutChart::layOut() {
    const double outer = hasOuterRing_ ? rect().width() * outerRingShare : 0;
    const double free = inset + outer;
    const QRectF area = QRectF(rect()).adjusted(free, free, -free, -free);
    ring_ = DonutGeometry(tokens_, ChartShapes::rect(area), reveal_->value());
    paths_.clear();
    for (const DonutGeometry::Slice& slice : ring_.slices()) {
        paths_.push_back(ChartShapes::sector(ChartShapes::point(ring_.center()), ring_.innerRadius(),
                                             ring_.outerRadius(), slice.startAngle, slice.sweep));
    }
    partPaths_.clear();
    for (const auto& [row, parts] : parts_) {
        const OuterRing around(ring_, row, parts, outerRingGap, outer - outerRingGap);
        for (const OuterRing::Arc& arc : around.arcs())
            partPaths_[row].push_back(ChartShapes::sector(ChartShapes::point(around.center()),
                                                          around.innerRadius(), around.outerRadius(),
                                                          arc.startAngle, arc.sweep));
    }
}

void DonutChart::showParts(std::size_t row, std::vector<std::int64_t> parts) {
    if (row >= rows_.size() || !hasOuterRing_) return;
    if (parts.empty())
        parts_.erase(row);
    else
        parts_[row] = std::move(parts);
    layOut();
    update();
}

std::size_t DonutChart::shownParts(std::size_t row) const {
    const auto known = parts_.find(row);
    return known == parts_.end() ? 0 : known->second.size();
}

void DonutChart::resizeEvent(QResizeEvent*) { layOut(); }

void DonutChart::showEvent(QShowEvent* event) {
    MarkedWidget::showEvent(event);
    reveal_->appear(revealMilliseconds);
}

MarkedWidget::Mark DonutChart::mark(std::size_t index) const {
    if (index == 0) {
        return {DisplayText::own(TokenTexts::count(total_.toStdString())),
                {},
                QRectF(ChartShapes::point(ring_.center()), QSizeF()),
                QAccessible::StaticText};
    }
    const std::size_t row = sectors_.at(index - 1);
    const QRectF area = row < paths_.size() ? paths_[row].boundingRect() : QRectF();
    return {rows_[row].name, rows_[row].value, area, QAccessible::Graphic};
}

MarkedWidget::Item DonutChart::stopOf(std::size_t item) const {
    const auto stop = std::lower_bound(sectors_.begin(), sectors_.end(), item);
    if (stop == sectors_.end() || *stop != item) return {};
    return static_cast<std::size_t>(stop - sectors_.begin());
}

MarkedWidget::Item DonutChart::markOf(std::size_t item) const {
    const Item stop = stopOf(item);
    return stop ? Item(*stop + 1) : Item();
}

MarkedWidget::Item DonutChart::itemOf(std::size_t mark) const {
    return mark == 0 ? Item() : Item(sectors_.at(mark - 1)); // the total is no item
}

MarkSubject DonutChart::subject(std::size_t item) const {
    return {rows_.at(item).name, DisplayText::own(LocaleFormat::grouped(rows_[item].tokens))};
}

MarkedWidget::Item DonutChart::itemAt(QPointF point) const {
    return ring_.sliceAt(ChartShapes::point(point));
}

void DonutChart::showRow(Item row) { setActive(row && stopOf(*row) ? row : Item()); }

QRect DonutChart::ringArea() const { return rect(); }

void DonutChart::activeMoved(Item before, std::optional<QPointF>) {
    // From one sector to the next only these two change; the others are dimmed already.
    if (!before || !active() || paths_.size() <= std::max(*before, *active())) {
        update(ringArea());
        return;
    }
    const auto area = [this](std::size_t row) {
        return paths_[row].boundingRect().toAlignedRect().adjusted(-1, -1, 1, 1);
    };
    update(QRegion(area(*before)).united(area(*active())));
}

void DonutChart::paintEvent(QPaintEvent* event) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const std::size_t row : sectors_) {
        if (row >= paths_.size() || !paths_[row].boundingRect().intersects(event->region().boundingRect()))
            continue;
        painter.setOpacity(!active() || *active() == row ? 1 : DonutGeometry::dimmedOpacity);
        painter.setBrush(theme.chartColor(row));
        painter.drawPath(paths_[row]);
    }
    paintParts(painter);
    painter.setOpacity(1);
    paintMiddle(painter);
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::tileRadius);
}

void DonutChart::paintParts(QPainter& painter) const {
    constexpr double strongest = 0.9;
    constexpr double weakest = 0.35;
    for (const auto& [row, paths] : partPaths_) {
        const double opacity = !active() || *active() == row ? 1 : DonutGeometry::dimmedOpacity;
        painter.setBrush(AppTheme::current().chartColor(row));
        for (std::size_t part = 0; part < paths.size(); ++part) {
            // The larger, the stronger: neighbours stay apart without a colour of their own.
            const double place = static_cast<double>(part) / static_cast<double>(paths.size());
            painter.setOpacity(opacity * (strongest - (strongest - weakest) * place));
            painter.drawPath(paths[part]);
        }
    }
}

void DonutChart::paintMiddle(QPainter& painter) const {
    const AppTheme& theme = AppTheme::current();
    const QPointF center = ChartShapes::point(ring_.center());
    const double room = 2 * ring_.innerRadius() * middleShare;
    const QFont numbers = ChartText::fitted(theme.font(TextStyle::largeTitle), total_, room);
    const QFont words = theme.font(TextStyle::caption);
    const QFontMetricsF numberMetrics(numbers);
    const QFontMetricsF wordMetrics(words);
    const double height = numberMetrics.capHeight() + wordGap + wordMetrics.height();
    const double baseline = center.y() - height / 2 + numberMetrics.capHeight();
    painter.setPen(theme.color(ThemeColor::primaryText));
    TabularDigits::paint(painter, {center.x() - TabularDigits::width(total_, numbers) / 2, baseline}, total_,
                         numbers);
    painter.setFont(words);
    painter.setPen(theme.color(ThemeColor::secondaryText));
    const QRectF line(center.x() - room / 2, baseline + wordGap, room, wordMetrics.height());
    ReadingText::draw(painter, line, Qt::AlignCenter | Qt::TextSingleLine,
                      DisplayText::own(TokenTexts::unit));
}

} // namespace loadscope
