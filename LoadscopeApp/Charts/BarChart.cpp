// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/BarChart.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int narrowest = 120;
constexpr QMargins ringRoom(3, 3, 3, 3);

/// Names come from outside: what is measured and painted is their harmless form.
BarChartData visibleNames(BarChartData data) {
    for (std::string& label : data.slotLabels)
        label = DisplayText::line(label).toStdString();
    return data;
}

} // namespace

BarChart::BarChart(Kind kind, BarChartData data, std::vector<Series> series, QWidget* parent)
    : MarkedWidget(QAccessible::Chart, parent),
      kind_(kind),
      data_(visibleNames(std::move(data))),
      series_(std::move(series)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (kind_ == Kind::column) setFocusPolicy(Qt::NoFocus);
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

std::string BarChart::nameOf(const BarChartGeometry::Mark& mark) const {
    const std::string& category = data_.slotLabels.at(mark.slot);
    if (kind_ == Kind::column) return category;
    return TokenTexts::within(series_.at(mark.series).name.toStdString(), category);
}

QRectF BarChart::areaOf(std::size_t item) const { return ChartShapes::rect(geometry_.marks().at(item).rect); }

MarkedWidget::Mark BarChart::mark(std::size_t index) const {
    const std::size_t item = order_.at(index);
    const BarChartGeometry::Mark& bar = geometry_.marks().at(item);
    const std::string spoken = TokenTexts::named(nameOf(bar), LocaleFormat::grouped(bar.tokens));
    return {DisplayText::own(spoken), {}, areaOf(item), QAccessible::ListItem};
}

MarkSubject BarChart::subject(std::size_t item) const {
    const BarChartGeometry::Mark& bar = geometry_.marks().at(item);
    return {DisplayText::own(nameOf(bar)), DisplayText::own(LocaleFormat::grouped(bar.tokens))};
}

MarkedWidget::Item BarChart::stopOf(std::size_t item) const {
    const auto stop = std::find(order_.begin(), order_.end(), item);
    return stop == order_.end() ? Item() : Item(static_cast<std::size_t>(stop - order_.begin()));
}

KeyWalk::Policy BarChart::walk() const {
    return {KeyWalk::Policy::Ends::stop, KeyWalk::Policy::Start::first};
}

MarkedWidget::Item BarChart::itemAt(QPointF point) const {
    return geometry_.markAt(ChartShapes::point(point));
}

void BarChart::activeMoved(Item before, std::optional<QPointF> place) {
    for (const Item item : {before, active()}) {
        if (item && *item < geometry_.marks().size()) update(areaOf(*item).toAlignedRect() + ringRoom);
    }
    if (before.has_value() != active().has_value()) update(); // the ring is around a bar or around all
    if (!active()) {
        if (tip_ != nullptr) tip_->hide();
        return;
    }
    // A chart of one bar has no room for a card, but what it stands on has.
    QWidget* surface = parentWidget() != nullptr ? parentWidget() : this;
    if (tip_ == nullptr) tip_ = new ChartTip(surface);
    const BarChartGeometry::Mark& bar = geometry_.marks().at(*active());
    tip_->showAt(mapTo(surface, place.value_or(areaOf(*active()).bottomRight())),
                 DisplayText::own(nameOf(bar)), DisplayText::own(TokenTexts::count(bar.tokens)));
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
    if (active() && *active() < geometry_.marks().size())
        FocusRing::paint(painter, QRectF(areaOf(*active()).toAlignedRect() + ringRoom), Metrics::barRadius);
    else
        FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

void BarChart::resizeEvent(QResizeEvent*) { layOut(); }

QString BarChart::labelAt(QPoint position) const {
    const auto& slots = geometry_.slots();
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        if (slots[slot].labelRect.contains(ChartShapes::point(QPointF(position))))
            return DisplayText::own(data_.slotLabels[slot]);
    }
    return {};
}

bool BarChart::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return MarkedWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    PlainToolTip::show(help->globalPos(), labelAt(help->pos()), this);
    return true;
}

} // namespace loadscope
