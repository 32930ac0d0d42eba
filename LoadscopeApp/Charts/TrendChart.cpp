// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TrendChart.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Charts/TrendChartOverlay.h"
#include "LoadscopeApp/Charts/TrendChartPainter.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace loadscope {

TrendChart::TrendChart(QWidget* card)
    : MarkedWidget(QAccessible::Chart, card),
      presentation_(
          std::make_shared<TrendsPresentation>(std::vector<RecordedScan>{}, std::nullopt, Timestamp{})),
      overlay_(new TrendChartOverlay(card, *this)) {
    setAccessibleName(DisplayText::own(TrendsPresentation::chartTitle));
    setAccessibleDescription(DisplayText::own(TrendsPresentation::chartKeys));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    AppTheme::bind(this, [this] { layOut(); });
}

void TrendChart::setPresentation(std::shared_ptr<const TrendsPresentation> presentation) {
    setActive({});
    chosen_.clear();
    presentation_ = std::move(presentation);
    palette_.clear();
    for (const TrendsPresentation::ToolSeries& series : presentation_->series())
        palette_.push_back(series.paletteIndex);
    layOut();
}

TrendChartGeometry TrendChart::geometryFor(QSizeF size) const {
    return {presentation_->chart(),
            {size.width(), size.height()},
            ChartText::measure(AppTheme::current().font(TextStyle::caption))};
}

void TrendChart::layOut() {
    geometry_ = geometryFor(QSizeF(size()));
    picture_ = {};
    update();
    overlay_->cover(QRect(pos(), size()));
}

void TrendChart::choose(std::size_t scan) {
    if (scan >= presentation_->scans().size()) return;
    if (std::erase(chosen_, scan) == 0) {
        if (chosen_.size() == 2) chosen_.erase(chosen_.begin());
        chosen_.push_back(scan);
    }
    update();
    Q_EMIT chosenChanged();
}

void TrendChart::describeMark(int mark, QAccessible::State& state) const {
    state.checkable = true;
    state.checked =
        std::find(chosen_.begin(), chosen_.end(), static_cast<std::size_t>(mark)) != chosen_.end();
}

void TrendChart::mousePressEvent(QMouseEvent* event) {
    const Item scan = itemAt(event->position());
    if (event->button() == Qt::LeftButton && scan)
        choose(*scan);
    else
        MarkedWidget::mousePressEvent(event);
}

void TrendChart::keyPressEvent(QKeyEvent* event) {
    const bool chooses =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (chooses && active())
        choose(*active());
    else
        MarkedWidget::keyPressEvent(event);
}

void TrendChart::activeMoved(Item, std::optional<QPointF>) { overlay_->refresh(); }

int TrendChart::markCount() const { return static_cast<int>(presentation_->scans().size()); }

std::size_t TrendChart::stopCount() const { return presentation_->scans().size(); }

KeyWalk::Policy TrendChart::walk() const {
    // Without a starting point, the newest scan is the one of interest.
    return {KeyWalk::Policy::Ends::stop, KeyWalk::Policy::Start::last, false};
}

MarkedWidget::Mark TrendChart::mark(std::size_t index) const {
    QRectF area;
    if (index < geometry_.marks().size()) {
        constexpr double radius = TrendChartGeometry::selectedPointRadius;
        const QPointF center = ChartShapes::point(geometry_.marks()[index].position);
        area = {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius};
    }
    return {DisplayText::own(presentation_->tooltip(index).spoken()), {}, area, QAccessible::ListItem};
}

void TrendChart::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const double ratio = painter.device()->devicePixelRatioF(); // of a screen, or of a picture of the window
    if (picture_.isNull() || picture_.devicePixelRatio() != ratio) {
        picture_ = QPixmap(size() * ratio);
        picture_.setDevicePixelRatio(ratio);
        picture_.fill(Qt::transparent);
        QPainter chart(&picture_);
        TrendChartPainter::paint(chart, geometry_, palette_);
    }
    painter.setClipRect(event->rect());
    painter.drawPixmap(0, 0, picture_);
    for (const std::size_t scan : chosen_)
        if (scan < geometry_.marks().size())
            TrendChartPainter::paintChosen(painter, geometry_.marks()[scan], palette_);
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

void TrendChart::resizeEvent(QResizeEvent*) { layOut(); }

void TrendChart::moveEvent(QMoveEvent*) { overlay_->cover(QRect(pos(), size())); }

} // namespace loadscope
