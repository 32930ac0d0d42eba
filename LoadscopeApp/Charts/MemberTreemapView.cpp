// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/MemberTreemapView.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Geometry/TreemapTiles.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace loadscope {
namespace {

constexpr double usualHeight = 320;
constexpr int usualWidth = 480;
constexpr double stripPadding = 6;
constexpr double smallestPainted = 1.5; ///< a tile whose shorter side is less is only its colour
constexpr double activeFillOpacity = 0.62;
constexpr double borderOpacity = 0.5;
constexpr double activeBorderWidth = 1.5;

/// The deeper, the stronger: members stand out from the group that holds them.
double fillOpacity(std::size_t depth) { return std::min(0.12 + 0.12 * static_cast<double>(depth), 0.36); }

} // namespace

MemberTreemapView::MemberTreemapView(std::shared_ptr<const ScanReport> report, QWidget* parent)
    : MarkedWidget(QAccessible::Chart, parent),
      report_(std::move(report)),
      members_(*report_),
      treemap_(*report_, members_),
      tip_(new ChartTip(this)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(DisplayText::own(MemberTreemap::title));
    setPaths([this](std::size_t node) { return treemap_.path(node); });
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize MemberTreemapView::sizeHint() const { return {usualWidth, AppTheme::current().scaled(usualHeight)}; }

void MemberTreemapView::resizeEvent(QResizeEvent*) { layOut(); }

void MemberTreemapView::layOut() {
    NestedTreemap::Style style;
    style.stripHeight = QFontMetricsF(AppTheme::current().font(TextStyle::caption)).height() + 2;
    layout_ = NestedTreemap(treemap_.nodes(), ChartShapes::rect(QRectF(rect())), style, zoomed_);
    shown_.clear();
    for (std::size_t node = 0; node < layout_.tiles().size(); ++node)
        if (!layout_.tiles()[node].isEmpty()) shown_.push_back(node);
    setActive(std::nullopt);
}

void MemberTreemapView::zoomTo(Item node) {
    if (node == zoomed_ || (node && !layout_.hasChildren(*node))) return;
    zoomed_ = node;
    layOut();
    update();
    AccessibleMarks::tellReordered(this);
    Q_EMIT zoomChanged(zoomed_);
}

bool MemberTreemapView::zoomOut() {
    if (!zoomed_) return false;
    const std::size_t left = *zoomed_;
    zoomTo(layout_.parentOf(left));
    if (hasFocus() && stopOf(left)) walkTo(*stopOf(left));
    return true;
}

void MemberTreemapView::follow(Item node) {
    const QScopedValueRollback follows(isFollowing_, true);
    setActive(node && stopOf(*node) ? node : Item());
}

MarkedWidget::Item MemberTreemapView::nextLevel(std::size_t node) const {
    Item level = node;
    while (level && layout_.parentOf(*level) != zoomed_)
        level = layout_.parentOf(*level);
    return level && layout_.hasChildren(*level) ? level : Item();
}

bool MemberTreemapView::canOpenMark(int mark) const {
    return layout_.hasChildren(shown_.at(static_cast<std::size_t>(mark))) || MarkedWidget::canOpenMark(mark);
}

void MemberTreemapView::openMark(int mark) {
    const std::size_t node = shown_.at(static_cast<std::size_t>(mark));
    if (layout_.hasChildren(node))
        zoomTo(node);
    else
        MarkedWidget::openMark(mark);
}

void MemberTreemapView::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (opens && active() && layout_.hasChildren(*active())) {
        zoomTo(active());
        if (!shown_.empty()) walkTo(0);
    } else if (event->key() != Qt::Key_Backspace || !zoomOut()) {
        MarkedWidget::keyPressEvent(event);
    }
}

void MemberTreemapView::mousePressEvent(QMouseEvent* event) {
    const Item node = event->button() == Qt::LeftButton ? itemAt(event->position()) : Item();
    const Item level = node ? nextLevel(*node) : Item();
    hasClickZoomed_ = level.has_value();
    if (level)
        zoomTo(level);
    else
        MarkedWidget::mousePressEvent(event);
}

void MemberTreemapView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!hasClickZoomed_) MarkedWidget::mouseDoubleClickEvent(event);
}

MarkedWidget::Mark MemberTreemapView::mark(std::size_t index) const {
    const std::size_t node = shown_.at(index);
    return {DisplayText::line(treemap_.spoken(node)),
            {},
            ChartShapes::rect(layout_.tiles()[node]),
            QAccessible::Graphic};
}

MarkSubject MemberTreemapView::subject(std::size_t item) const {
    return {DisplayText::line(treemap_.name(item)), DisplayText::own(treemap_.tokens(item))};
}

MarkedWidget::Item MemberTreemapView::stopOf(std::size_t item) const {
    const auto stop = std::lower_bound(shown_.begin(), shown_.end(), item);
    if (stop == shown_.end() || *stop != item) return {};
    return static_cast<std::size_t>(stop - shown_.begin());
}

MarkedWidget::Item MemberTreemapView::itemAt(QPointF point) const {
    return layout_.tileAt(ChartShapes::point(point));
}

void MemberTreemapView::updateTile(Item item) {
    if (item && *item < layout_.tiles().size())
        update(ChartShapes::rect(layout_.tiles()[*item]).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void MemberTreemapView::activeMoved(Item before, std::optional<QPointF> place) {
    updateTile(before);
    updateTile(active());
    if (!active() || *active() >= layout_.tiles().size() || isFollowing_) {
        tip_->hide();
        return;
    }
    const QPointF middle = ChartShapes::point(layout_.tiles()[*active()].center());
    tip_->showAt(place.value_or(middle), DisplayText::line(treemap_.name(*active())),
                 DisplayText::line(treemap_.detail(*active())));
}

void MemberTreemapView::paintTile(QPainter& painter, std::size_t node) const {
    const AppTheme& theme = AppTheme::current();
    const QColor color = theme.chartColor(treemap_.rowOf(node));
    const QColor card = theme.color(ThemeColor::card);
    const bool isActive = active() == Item(node);
    const QRectF tile = ChartShapes::rect(layout_.tiles()[node]);
    const double opacity = isActive ? activeFillOpacity : fillOpacity(treemap_.nodes()[node].depth);
    const QColor fill = ThemeColors::blended(color, opacity, card);
    const double shorter = std::min(tile.width(), tile.height());
    if (shorter <= smallestPainted + 2) {
        painter.fillRect(tile, fill);
        return;
    }
    const double border = isActive ? activeBorderWidth : 1;
    painter.setBrush(fill);
    painter.setPen(QPen(isActive ? color : ThemeColors::blended(color, borderOpacity, card), border));
    const double radius = std::min<double>(Metrics::tileRadius, shorter / 4);
    painter.drawRoundedRect(tile.adjusted(border / 2, border / 2, -border / 2, -border / 2), radius, radius);
}

void MemberTreemapView::paintLabel(QPainter& painter, std::size_t node) const {
    const RectF tile = layout_.isDivided(node) ? layout_.strips()[node] : layout_.tiles()[node];
    if (tile.isEmpty() || tile.width < TreemapTiles::minimumLabelWidth) return;
    const QFontMetricsF metrics(painter.font());
    QRectF box;
    if (layout_.isDivided(node)) {
        box = ChartShapes::rect(tile).adjusted(stripPadding, 0, -stripPadding, 0);
    } else {
        const auto label = TreemapTiles::labelBox(tile, {tile.width, metrics.height()});
        if (!label) return;
        box = ChartShapes::rect(*label);
    }
    painter.setPen(AppTheme::current().color(ThemeColor::primaryText));
    ReadingText::draw(
        painter, box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        metrics.elidedText(DisplayText::line(treemap_.label(node)), Qt::ElideMiddle, box.width()));
}

void MemberTreemapView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(AppTheme::current().font(TextStyle::caption, QFont::Medium));
    for (const std::size_t node : shown_) {
        if (!event->region().intersects(ChartShapes::rect(layout_.tiles()[node]).toAlignedRect())) continue;
        paintTile(painter, node);
        paintLabel(painter, node);
    }
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::tileRadius);
}

} // namespace loadscope
