// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/TreemapView.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Charts/ChartShapes.h"
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace loadscope {
namespace {

constexpr double usualHeight = 220;
constexpr int usualWidth = 480;
constexpr double gap = 2;
constexpr double fillOpacity = 0.27;
constexpr double activeFillOpacity = 0.48;
constexpr double borderOpacity = 0.5;
constexpr double activeBorderWidth = 1.5;

} // namespace

TreemapView::TreemapView(std::vector<Tile> tiles, QWidget* parent)
    : MarkedWidget(QAccessible::Chart, parent), tiles_(std::move(tiles)), tip_(new ChartTip(this)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Relative size"));
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize TreemapView::sizeHint() const { return {usualWidth, AppTheme::current().scaled(usualHeight)}; }

MarkedWidget::Mark TreemapView::mark(std::size_t index) const {
    const Tile& tile = tiles_.at(index);
    const QRectF area = index < layout_.tiles().size() ? ChartShapes::rect(layout_.tiles()[index]) : QRectF();
    return {tile.path, tile.detail, area, QAccessible::Graphic};
}

void TreemapView::layOut() {
    std::vector<double> weights;
    weights.reserve(tiles_.size());
    for (const Tile& tile : tiles_)
        weights.push_back(tile.weight);
    layout_ = TreemapTiles(weights, ChartShapes::rect(QRectF(rect())), gap);
}

void TreemapView::resizeEvent(QResizeEvent*) {
    layOut();
    setActive(std::nullopt);
}

MarkedWidget::Item TreemapView::stopOf(std::size_t item) const {
    const std::vector<std::size_t>& order = layout_.keyboardOrder();
    const auto stop = std::find(order.begin(), order.end(), item);
    return stop == order.end() ? Item() : Item(static_cast<std::size_t>(stop - order.begin()));
}

MarkedWidget::Item TreemapView::itemAt(QPointF point) const {
    return layout_.tileAt(ChartShapes::point(point));
}

void TreemapView::follow(Item item) {
    const QScopedValueRollback follows(isFollowing_, true);
    setActive(item && stopOf(*item) ? item : Item());
}

void TreemapView::updateTile(Item item) {
    if (item && *item < layout_.tiles().size())
        update(ChartShapes::rect(layout_.tiles()[*item]).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void TreemapView::activeMoved(Item before, std::optional<QPointF> place) {
    updateTile(before);
    updateTile(active());
    if (!active() || *active() >= layout_.tiles().size() || isFollowing_) {
        tip_->hide();
        return;
    }
    const Tile& tile = tiles_[*active()];
    const QPointF middle = ChartShapes::point(layout_.tiles()[*active()].center());
    tip_->showAt(place.value_or(middle), tile.path, tile.detail);
}

void TreemapView::paintTile(QPainter& painter, std::size_t index) const {
    const AppTheme& theme = AppTheme::current();
    const QColor color = theme.chartColor(index);
    const QColor card = theme.color(ThemeColor::card);
    const bool isActive = active() == Item(index);
    const double border = isActive ? activeBorderWidth : 1;
    const QRectF tile = ChartShapes::rect(layout_.tiles()[index]);
    painter.setBrush(ThemeColors::blended(color, isActive ? activeFillOpacity : fillOpacity, card));
    if (std::min(tile.width(), tile.height()) <= 2 * border) {
        painter.setPen(Qt::NoPen);
        painter.drawRect(tile);
        return;
    }
    painter.setPen(QPen(isActive ? color : ThemeColors::blended(color, borderOpacity, card), border));
    const double radius = std::min<double>(Metrics::tileRadius, std::min(tile.width(), tile.height()) / 4);
    painter.drawRoundedRect(tile.adjusted(border / 2, border / 2, -border / 2, -border / 2), radius, radius);
}

void TreemapView::paintLabel(QPainter& painter, std::size_t index) const {
    const QFontMetricsF metrics(painter.font());
    const QString& text = tiles_[index].label;
    const auto box = TreemapTiles::labelBox(layout_.tiles()[index],
                                            {metrics.horizontalAdvance(text) + 1, metrics.height()});
    if (!box) return;
    painter.setPen(AppTheme::current().color(ThemeColor::primaryText));
    ReadingText::draw(painter, ChartShapes::rect(*box), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      metrics.elidedText(text, Qt::ElideMiddle, box->width));
}

void TreemapView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(AppTheme::current().font(TextStyle::caption, QFont::Medium));
    for (std::size_t index = 0; index < layout_.tiles().size(); ++index) {
        const RectF& tile = layout_.tiles()[index];
        if (tile.isEmpty() || !event->region().intersects(ChartShapes::rect(tile).toAlignedRect())) continue;
        paintTile(painter, index);
        if (tile.width > TreemapTiles::minimumLabelWidth / 2) paintLabel(painter, index);
    }
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::tileRadius);
}

} // namespace loadscope
