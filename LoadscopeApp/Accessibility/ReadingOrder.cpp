// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/ReadingOrder.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QWidget>

#include <algorithm>
#include <tuple>
#include <vector>

namespace loadscope {
namespace {

using Widgets = std::vector<QWidget*>;

std::vector<QLayoutItem*> itemsInOrder(const QLayout& layout) {
    std::vector<std::tuple<int, int, QLayoutItem*>> placed;
    const auto* grid = qobject_cast<const QGridLayout*>(&layout);
    for (int index = 0; index < layout.count(); ++index) {
        int row = index;
        int column = 0;
        int span = 0;
        if (grid != nullptr) grid->getItemPosition(index, &row, &column, &span, &span);
        placed.emplace_back(row, column, layout.itemAt(index));
    }
    std::sort(placed.begin(), placed.end());
    std::vector<QLayoutItem*> items;
    for (const auto& [row, column, item] : placed)
        items.push_back(item);
    return items;
}

void collect(const QLayout& layout, Widgets& widgets) {
    for (QLayoutItem* item : itemsInOrder(layout)) {
        if (item->widget() != nullptr) widgets.push_back(item->widget());
        if (item->layout() != nullptr) collect(*item->layout(), widgets);
    }
}

Widgets childrenOf(const QWidget& widget) {
    Widgets children;
    for (QObject* child : widget.children())
        if (auto* childWidget = qobject_cast<QWidget*>(child); childWidget && !childWidget->isWindow())
            children.push_back(childWidget);
    return children;
}

void order(const QWidget& widget) {
    const Widgets before = childrenOf(widget);
    if (widget.layout() != nullptr) {
        Widgets wanted;
        collect(*widget.layout(), wanted);
        for (QWidget* child : before)
            if (std::find(wanted.begin(), wanted.end(), child) == wanted.end()) wanted.push_back(child);
        if (wanted != before)
            for (QWidget* child : wanted)
                child->raise();
    }
    for (const QWidget* child : before)
        order(*child);
}

void chain(QWidget& widget, QWidget*& last) {
    if (widget.focusPolicy() & Qt::TabFocus) {
        if (last != nullptr) QWidget::setTabOrder(last, &widget);
        last = &widget;
    }
    for (QWidget* child : childrenOf(widget))
        chain(*child, last);
}

} // namespace

void ReadingOrder::follow(QWidget& part) {
    QWidget* page = &part;
    for (QWidget* above = &part; above != nullptr && !above->isWindow(); above = above->parentWidget())
        if (qobject_cast<QScrollArea*>(above) != nullptr) page = above;
    order(*page);
    QWidget* last = nullptr;
    chain(*page, last);
}

} // namespace loadscope
