// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/AdaptivePair.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int deepest = 120; ///< beside something very high, the first does not move down further

} // namespace

AdaptivePair::AdaptivePair(QWidget* parent, Rule rule) : QLayout(parent), rule_(rule) {
    setContentsMargins(0, 0, 0, 0);
}

AdaptivePair::~AdaptivePair() { qDeleteAll(items_); }

void AdaptivePair::addItem(QLayoutItem* item) { items_.append(item); }

QLayoutItem* AdaptivePair::takeAt(int index) {
    return index >= 0 && index < count() ? items_.takeAt(index) : nullptr;
}

bool AdaptivePair::isSideBySide(int width) const {
    return count() > 1 && width >= AppTheme::current().scaled(rule_.sideBySideFrom);
}

int AdaptivePair::firstWidth(int width) const {
    if (rule_.firstShare > 0)
        return static_cast<int>(std::lround((width - rule_.spacing) * rule_.firstShare));
    return std::min(width, items_.first()->sizeHint().width());
}

int AdaptivePair::heightOf(QLayoutItem* item, int width) {
    return item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height();
}

int AdaptivePair::heightForWidth(int width) const {
    if (items_.isEmpty()) return 0;
    if (count() == 1) return heightOf(items_.first(), width);
    const int first = firstWidth(width);
    if (isSideBySide(width))
        return std::max(heightOf(items_[0], first), heightOf(items_[1], width - rule_.spacing - first));
    return heightOf(items_[0], rule_.centersFirst ? first : width) + rule_.stackedSpacing +
           heightOf(items_[1], width);
}

QSize AdaptivePair::sizeHint() const {
    const int width = std::max(minimumSize().width(), AppTheme::current().scaled(rule_.sideBySideFrom));
    return {width, heightForWidth(width)};
}

QSize AdaptivePair::minimumSize() const {
    QSize smallest(0, 0);
    for (QLayoutItem* item : items_)
        smallest.setWidth(std::max(smallest.width(), item->minimumSize().width()));
    return smallest; // the height follows from the width
}

void AdaptivePair::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    if (items_.isEmpty()) return;
    const Qt::LayoutDirection direction = parentWidget()->layoutDirection();
    const auto place = [&](int index, const QRect& target) {
        items_[index]->setGeometry(QStyle::visualRect(direction, area, target));
    };
    if (count() == 1) {
        place(0, area);
        return;
    }
    const int first = firstWidth(area.width());
    if (isSideBySide(area.width())) {
        const int second = area.width() - rule_.spacing - first;
        int top = 0;
        int height = area.height();
        if (!rule_.equalHeights) {
            height = std::min(area.height(), heightOf(items_[0], first));
            top = std::min((area.height() - height) / 2, deepest);
        }
        place(0, {area.x(), area.y() + top, first, height});
        place(1, {area.x() + first + rule_.spacing, area.y(), second, area.height()});
        return;
    }
    const int width = rule_.centersFirst ? first : area.width();
    const int height = heightOf(items_[0], width);
    place(0, {area.x() + (area.width() - width) / 2, area.y(), width, height});
    const int top = height + rule_.stackedSpacing;
    place(1, {area.x(), area.y() + top, area.width(), std::max(0, area.height() - top)});
}

} // namespace loadscope
