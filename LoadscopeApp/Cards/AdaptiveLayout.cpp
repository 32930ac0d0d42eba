// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/AdaptiveLayout.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int deepest = 120; ///< beside something very high, the first does not move down further
constexpr std::size_t mostRemembered = 6;

int heightOf(const QLayoutItem& item, int width) {
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

} // namespace

AdaptiveLayout::AdaptiveLayout(const Rule& rule, QWidget* parent) : QLayout(parent), rule_(rule) {
    setContentsMargins(0, 0, 0, 0);
}

AdaptiveLayout::~AdaptiveLayout() = default;

void AdaptiveLayout::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
    invalidate();
}

QLayoutItem* AdaptiveLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* AdaptiveLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
    items_.erase(items_.begin() + index);
    invalidate();
    return item;
}

void AdaptiveLayout::invalidate() {
    narrowest_.reset();
    remembered_.clear();
    QLayout::invalidate();
}

int AdaptiveLayout::equalWidth(int width, int columns) const {
    return (width - (columns - 1) * rule_.spacing) / columns;
}

int AdaptiveLayout::columns(int width) const {
    constexpr int fewest = 4;
    if (!rule_.wraps || count() < fewest) return 1;
    const int wanted = std::max(minimumSize().width(), AppTheme::current().scaled(rule_.narrowest));
    for (const int columns : {3, 2})
        if (equalWidth(width, columns) >= wanted) return columns;
    return 1;
}

int AdaptiveLayout::firstWidth(int width) const {
    if (rule_.widths == Widths::firstByShare)
        return static_cast<int>(std::lround((width - rule_.spacing) * rule_.firstShare));
    if (rule_.widths == Widths::firstAsItAsks) return std::min(width, items_.front()->sizeHint().width());
    return equalWidth(width, count());
}

int AdaptiveLayout::widestHint() const {
    int width = 0;
    for (const auto& item : items_)
        width = std::max(width, item->sizeHint().width());
    return width;
}

bool AdaptiveLayout::isSideBySide(int width) const {
    const AppTheme& theme = AppTheme::current();
    if (count() < 2) return false;
    if (rule_.sideBySideFrom > 0) return width >= theme.scaled(rule_.sideBySideFrom);
    const int wanted = rule_.narrowest == 0 ? widestHint() : minimumSize().width();
    return equalWidth(width, count()) >= std::max(wanted, theme.scaled(rule_.narrowest));
}

const AdaptiveLayout::Places& AdaptiveLayout::placesFor(int width) const {
    const auto known = std::find_if(remembered_.begin(), remembered_.end(),
                                    [width](const Places& one) { return one.width == width; });
    if (known != remembered_.end()) return *known;
    if (remembered_.size() == mostRemembered) remembered_.erase(remembered_.begin());
    return remembered_.emplace_back(place(width));
}

AdaptiveLayout::Places AdaptiveLayout::placeInRows(int width, int columns) const {
    Places result{width, 0, false, true, {}};
    const int wide = equalWidth(width, columns);
    for (int first = 0; first < count(); first += columns) {
        const int end = std::min(first + columns, count());
        int high = 0;
        for (int i = first; i < end; ++i)
            high = std::max(high, heightOf(*items_[static_cast<std::size_t>(i)], wide));
        const int top = first == 0 ? 0 : result.height + rule_.stackedSpacing;
        for (int i = first; i < end; ++i)
            result.items.emplace_back((i - first) * (wide + rule_.spacing), top, wide, high);
        result.height = top + high;
    }
    return result;
}

AdaptiveLayout::Places AdaptiveLayout::place(int width) const {
    const bool areSideBySide = isSideBySide(width);
    if (const int inRow = areSideBySide ? 1 : columns(width); inRow > 1) return placeInRows(width, inRow);
    Places result{width, 0, areSideBySide, false, {}};
    QPoint origin;
    for (const auto& item : items_) {
        const bool isFirst = result.items.empty();
        int wide = width;
        if (result.areSideBySide && !isFirst && rule_.widths != Widths::equal)
            wide = (width - firstWidth(width)) / (count() - 1) - rule_.spacing;
        else if (result.areSideBySide || (isFirst && rule_.centersFirst))
            wide = firstWidth(width);
        const int left = result.areSideBySide ? origin.x() : (width - wide) / 2;
        result.items.emplace_back(left, origin.y(), wide, heightOf(*item, wide));
        const QRect& placed = result.items.back();
        result.height = std::max(result.height, placed.y() + placed.height());
        if (result.areSideBySide)
            origin.rx() += wide + rule_.spacing;
        else
            origin.ry() += placed.height() + rule_.stackedSpacing;
    }
    return result;
}

QSize AdaptiveLayout::sizeHint() const {
    const int sideBySide = AppTheme::current().scaled(rule_.sideBySideFrom);
    const int width = sideBySide > 0 ? std::max(minimumSize().width(), sideBySide) : widestHint();
    return {width, heightForWidth(width)};
}

QSize AdaptiveLayout::minimumSize() const {
    if (!narrowest_) {
        narrowest_ = 0;
        for (const auto& item : items_)
            narrowest_ = std::max(*narrowest_, item->minimumSize().width());
    }
    return {*narrowest_, 0}; // the height follows from the width
}

QRect AdaptiveLayout::stretched(const Places& places, std::size_t item, int height) const {
    QRect area = places.items[item];
    if (places.areInRows) return area;
    if (places.areSideBySide && (rule_.equalHeights || item > 0)) {
        area.setHeight(height);
    } else if (places.areSideBySide) {
        area.setHeight(std::min(height, area.height()));
        area.moveTop(std::min((height - area.height()) / 2, deepest));
    } else if (item + 1 == places.items.size()) {
        area.setHeight(std::max(0, height - area.y()));
    }
    return area;
}

void AdaptiveLayout::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    const Places places = placesFor(area.width());
    const Qt::LayoutDirection direction =
        parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    for (std::size_t item = 0; item < places.items.size(); ++item) {
        const QRect target = stretched(places, item, area.height()).translated(area.topLeft());
        items_[item]->setGeometry(QStyle::visualRect(direction, area, target));
    }
}

} // namespace loadscope
