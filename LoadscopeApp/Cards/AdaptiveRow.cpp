// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/AdaptiveRow.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace loadscope {

AdaptiveRow::AdaptiveRow(int narrowest, int spacing) : narrowest_(narrowest) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

AdaptiveRow::~AdaptiveRow() = default;

void AdaptiveRow::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
    invalidate();
}

QLayoutItem* AdaptiveRow::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* AdaptiveRow::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
    items_.erase(items_.begin() + index);
    invalidate();
    return item;
}

int AdaptiveRow::itemWidth(int width) const {
    const int columns = std::max(count(), 1);
    return (width - (columns - 1) * spacing()) / columns;
}

bool AdaptiveRow::isStacked(int width) const {
    const int wanted = narrowest_ == 0 ? widestHint() : minimumSize().width();
    return itemWidth(width) < std::max(wanted, AppTheme::current().scaled(narrowest_));
}

int AdaptiveRow::itemHeight(const QLayoutItem& item, int width) {
    return item.hasHeightForWidth() ? std::max(item.heightForWidth(width), item.minimumSize().height())
                                    : item.sizeHint().height();
}

int AdaptiveRow::tallest(int width) const {
    int height = 0;
    for (const auto& item : items_)
        height = std::max(height, itemHeight(*item, width));
    return height;
}

int AdaptiveRow::heightForWidth(int width) const {
    const auto known = heights_.find(width);
    return known != heights_.end() ? known->second : heights_[width] = measuredHeight(width);
}

void AdaptiveRow::invalidate() {
    minimum_.reset();
    heights_.clear();
    QLayout::invalidate();
}

int AdaptiveRow::measuredHeight(int width) const {
    if (items_.empty()) return 0;
    if (!isStacked(width)) return tallest(itemWidth(width));
    int height = (count() - 1) * spacing();
    for (const auto& item : items_)
        height += itemHeight(*item, width);
    return height;
}

int AdaptiveRow::widestHint() const {
    int width = 0;
    for (const auto& item : items_)
        width = std::max(width, item->sizeHint().width());
    return width;
}

QSize AdaptiveRow::sizeHint() const {
    const int width = widestHint();
    return {width, tallest(width)};
}

QSize AdaptiveRow::minimumSize() const {
    if (!minimum_) {
        minimum_ = QSize();
        for (const auto& item : items_)
            minimum_ = minimum_->expandedTo(item->minimumSize());
    }
    return *minimum_;
}

void AdaptiveRow::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    const bool stacked = isStacked(area.width());
    const int width = stacked ? area.width() : itemWidth(area.width());
    const Qt::LayoutDirection direction =
        parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    QPoint origin = area.topLeft();
    for (const auto& item : items_) {
        const int height = stacked ? itemHeight(*item, width) : area.height();
        item->setGeometry(QStyle::visualRect(direction, area, QRect(origin, QSize(width, height))));
        if (stacked)
            origin.ry() += height + spacing();
        else
            origin.rx() += width + spacing();
    }
}

} // namespace loadscope
