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
#include <QPainter>

#include <algorithm>

namespace loadscope {

TrendChart::TrendChart(QWidget* card)
    : QWidget(card),
      presentation_(
          std::make_shared<TrendsPresentation>(std::vector<RecordedScan>{}, std::nullopt, Timestamp{})),
      overlay_(new TrendChartOverlay(card, *this)) {
    AccessibleMarks::install();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(DisplayText::own(TrendsPresentation::chartTitle));
    setAccessibleDescription(QStringLiteral("Left and right walk the recorded scans."));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    AppTheme::bind(this, [this] { layOut(); });
}

void TrendChart::setPresentation(std::shared_ptr<const TrendsPresentation> presentation) {
    selectScan({});
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

void TrendChart::selectScan(std::optional<std::size_t> scan) {
    if (scan == selected_) return;
    selected_ = scan;
    overlay_->refresh();
}

int TrendChart::markCount() const { return static_cast<int>(presentation_->scans().size()); }

QString TrendChart::markText(int mark) const {
    return DisplayText::own(presentation_->tooltip(static_cast<std::size_t>(mark)).spoken());
}

QRect TrendChart::markArea(int mark) const {
    const auto index = static_cast<std::size_t>(mark);
    if (index >= geometry_.marks().size()) return {};
    const QPointF center = ChartShapes::point(geometry_.marks()[index].position);
    constexpr double radius = TrendChartGeometry::selectedPointRadius;
    return QRectF(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius).toAlignedRect();
}

int TrendChart::currentMark() const { return selected_ ? static_cast<int>(*selected_) : -1; }

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
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

void TrendChart::resizeEvent(QResizeEvent*) { layOut(); }

void TrendChart::moveEvent(QMoveEvent*) { overlay_->cover(QRect(pos(), size())); }

void TrendChart::mouseMoveEvent(QMouseEvent* event) { selectScan(geometry_.markAt(event->position().x())); }

void TrendChart::leaveEvent(QEvent*) { selectScan({}); }

void TrendChart::keyPressEvent(QKeyEvent* event) {
    const int last = markCount() - 1;
    int target = -1;
    const bool rightToLeft = layoutDirection() == Qt::RightToLeft;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const bool forward = (event->key() == Qt::Key_Right) != rightToLeft;
        // Without a starting point, the newest scan is the one of interest.
        target = selected_ ? std::clamp(currentMark() + (forward ? 1 : -1), 0, last) : last;
        break;
    }
    case Qt::Key_Home:
        target = 0;
        break;
    case Qt::Key_End:
        target = last;
        break;
    case Qt::Key_Escape:
        if (!selected_) return QWidget::keyPressEvent(event);
        selectScan({});
        return;
    default:
        return QWidget::keyPressEvent(event);
    }
    if (target < 0 || last < 0) return;
    selectScan(static_cast<std::size_t>(target));
    AccessibleMarks::tellCurrent(this);
}

void TrendChart::focusInEvent(QFocusEvent*) { update(); }

void TrendChart::focusOutEvent(QFocusEvent*) {
    update();
    if (!underMouse()) selectScan({});
}

} // namespace loadscope
