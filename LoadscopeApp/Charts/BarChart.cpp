// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/BarChart.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int narrowest = 120;
constexpr int marginAroundBar = 60; ///< kept in view around the bar that the keyboard has reached

/// Names come from outside: what is measured and painted is their harmless form.
BarChartData visibleNames(BarChartData data) {
    for (std::string& label : data.slotLabels)
        label = DisplayText::line(label).toStdString();
    return data;
}

} // namespace

BarChart::BarChart(Kind kind, BarChartData data, std::vector<Series> series, QWidget* parent)
    : QWidget(parent), kind_(kind), data_(visibleNames(std::move(data))), series_(std::move(series)) {
    AccessibleMarks::install();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (kind_ == Kind::grouped) setFocusPolicy(Qt::StrongFocus);
    AppTheme::bind(this, [this] {
        layOut();
        updateGeometry();
    });
}

BarChartGeometry BarChart::geometryFor(double width) const {
    const bool isGrouped = kind_ == Kind::grouped;
    const TextStyle style = isGrouped ? TextStyle::body : TextStyle::caption;
    return {data_, width, ChartText::measure(AppTheme::current().font(style)),
            isGrouped ? BarChartStyle::grouped() : BarChartStyle::column()};
}

void BarChart::layOut() {
    geometry_ = geometryFor(width());
    order_ = geometry_.keyboardOrder();
    update();
}

QSize BarChart::sizeHint() const { return {300, static_cast<int>(std::ceil(geometry_.height()))}; }

QSize BarChart::minimumSizeHint() const { return {narrowest, sizeHint().height()}; }

QString BarChart::textOf(const BarChartGeometry::Mark& mark) const {
    const QString category = DisplayText::own(data_.slotLabels.at(mark.slot));
    const QString tokens = DisplayText::own(LocaleFormat::grouped(mark.tokens)) + QStringLiteral(" tokens");
    if (kind_ == Kind::column) return category + QStringLiteral(": ") + tokens;
    return series_.at(mark.series).name + QStringLiteral(" · ") + category + QStringLiteral(": ") + tokens;
}

int BarChart::markCount() const { return static_cast<int>(order_.size()); }

QString BarChart::markText(int mark) const {
    return textOf(geometry_.marks().at(order_.at(static_cast<std::size_t>(mark))));
}

QRect BarChart::markArea(int mark) const {
    return ChartShapes::rect(geometry_.marks().at(order_.at(static_cast<std::size_t>(mark))).rect)
        .toAlignedRect();
}

void BarChart::paintLabels(QPainter& painter, const BarChartGeometry& geometry, const QRectF& visible) const {
    const AppTheme& theme = AppTheme::current();
    const bool isGrouped = kind_ == Kind::grouped;
    painter.setFont(theme.font(isGrouped ? TextStyle::body : TextStyle::caption));
    painter.setPen(theme.color(isGrouped ? ThemeColor::primaryText : ThemeColor::secondaryText));
    for (std::size_t slot = 0; slot < geometry.slots().size(); ++slot) {
        const QRectF area = ChartShapes::rect(geometry.slots()[slot].labelRect);
        if (area.top() > visible.bottom() || area.bottom() < visible.top()) continue;
        ChartText::paintElided(painter, area, Qt::AlignRight | Qt::AlignVCenter,
                               DisplayText::own(data_.slotLabels[slot]));
    }
    painter.setFont(theme.font(TextStyle::caption));
    painter.setPen(theme.color(ThemeColor::secondaryText));
    for (const BarChartGeometry::Tick& tick : geometry.ticks()) {
        if (tick.rect)
            ReadingText::draw(painter, ChartShapes::rect(*tick.rect), Qt::AlignCenter | Qt::TextDontClip,
                              DisplayText::own(tick.label));
    }
}

void BarChart::paint(QPainter& painter, const BarChartGeometry& geometry, const QRectF& visible) const {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme.color(ThemeColor::divider), 1));
    for (const BarChartGeometry::Tick& tick : geometry.ticks()) {
        const double x = std::floor(tick.x) + 0.5;
        painter.drawLine(QPointF(x, geometry.plot().y), QPointF(x, geometry.plot().bottom()));
    }
    painter.setPen(Qt::NoPen);
    for (const BarChartGeometry::Mark& mark : geometry.marks()) {
        const QRectF bar = ChartShapes::rect(mark.rect);
        if (bar.width() <= 0 || bar.top() > visible.bottom() || bar.bottom() < visible.top()) continue;
        const double radius = std::min({BarChartGeometry::cornerRadius, bar.width() / 2, bar.height() / 2});
        painter.setBrush(theme.chartColor(series_.at(mark.series).paletteIndex));
        painter.drawRoundedRect(bar, radius, radius);
    }
    paintLabels(painter, geometry, visible);
}

void BarChart::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    paint(painter, geometry_, event->rect());
    if (!FocusRing::isWanted(this)) return;
    if (current_ >= 0)
        FocusRing::paint(painter, QRectF(markArea(current_)).adjusted(-3, -3, 3, 3), Metrics::barRadius);
    else
        FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

void BarChart::resizeEvent(QResizeEvent*) { layOut(); }

QString BarChart::toolTipAt(QPoint position) const {
    const PointF point{static_cast<double>(position.x()), static_cast<double>(position.y())};
    if (const auto mark = geometry_.markAt(point)) return textOf(geometry_.marks()[*mark]);
    const auto& slots = geometry_.slots();
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        if (slots[slot].labelRect.contains(point)) return DisplayText::own(data_.slotLabels[slot]);
    }
    return {};
}

bool BarChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    PlainToolTip::show(help->globalPos(), toolTipAt(help->pos()), this);
    return true;
}

void BarChart::keyPressEvent(QKeyEvent* event) {
    const int last = markCount() - 1;
    const Qt::Key back = layoutDirection() == Qt::RightToLeft ? Qt::Key_Right : Qt::Key_Left;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const bool isBack = event->key() == Qt::Key_Up || event->key() == back;
        return setCurrent(isBack ? std::max(current_ - 1, 0) : std::min(current_ + 1, last));
    }
    case Qt::Key_Home:
        return setCurrent(0);
    case Qt::Key_End:
        return setCurrent(last);
    default:
        QWidget::keyPressEvent(event);
    }
}

void BarChart::setCurrent(int mark) {
    if (markCount() == 0) return;
    current_ = mark;
    update();
    const QRect area = markArea(mark);
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        auto* scroll = qobject_cast<QScrollArea*>(above);
        if (scroll == nullptr) continue;
        const QPoint center = mapTo(scroll->widget(), area.center());
        scroll->ensureVisible(center.x(), center.y(), 0, marginAroundBar);
        break;
    }
    PlainToolTip::show(mapToGlobal(QPoint(area.right(), area.bottom())), markText(mark), this);
    AccessibleMarks::tellCurrent(this);
}

void BarChart::focusOutEvent(QFocusEvent*) {
    current_ = -1;
    update();
}

} // namespace loadscope
