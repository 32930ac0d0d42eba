// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/MarkedWidget.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollArea>

#include <algorithm>

namespace loadscope {
MarkedWidget::MarkedWidget(QAccessible::Role role, QWidget* parent) : QWidget(parent), role_(role) {
    AccessibleMarks::install();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

QString MarkedWidget::markText(int index) const { return mark(static_cast<std::size_t>(index)).name; }

QString MarkedWidget::markValue(int index) const { return mark(static_cast<std::size_t>(index)).value; }

QRect MarkedWidget::markArea(int index) const {
    return mark(static_cast<std::size_t>(index)).area.toAlignedRect();
}

QAccessible::Role MarkedWidget::markRole(int index) const {
    return mark(static_cast<std::size_t>(index)).role;
}

int MarkedWidget::currentMark() const {
    const Item spoken = active_ ? markOf(*active_) : std::nullopt;
    return spoken ? static_cast<int>(*spoken) : -1;
}

void MarkedWidget::bringIntoView(const QRectF& area) const {
    constexpr int margin = 24;
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        auto* page = qobject_cast<QScrollArea*>(above);
        if (page == nullptr || page->widget() == nullptr) continue;
        const QPoint middle = mapTo(page->widget(), area.center().toPoint());
        page->ensureVisible(middle.x(), middle.y(), 0,
                            static_cast<int>(area.height() / 2) + std::max(margin, roomAbove()));
        return;
    }
}

void MarkedWidget::setActive(Item item) { change(item, std::nullopt); }

void MarkedWidget::change(Item item, std::optional<QPointF> place) {
    if (item == active_) return;
    const Item before = active_;
    active_ = item;
    activeMoved(before, place);
    Q_EMIT activeChanged(active_);
}

void MarkedWidget::walkTo(std::size_t stop) {
    const std::size_t item = itemAtStop(stop);
    change(item, std::nullopt);
    const Item spoken = markOf(item);
    if (!spoken) return;
    bringIntoView(mark(*spoken).area);
    AccessibleMarks::tellCurrent(this);
}

void MarkedWidget::keyPressEvent(QKeyEvent* event) {
    const Item current = active_ ? stopOf(*active_) : std::nullopt;
    if (const Item next = KeyWalk::step(*event, layoutDirection(), stopCount(), current, walk()))
        walkTo(*next);
    else if (event->key() == Qt::Key_Escape && active_)
        change(std::nullopt, std::nullopt);
    else if (const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
             !opens || !openFile(active_))
        QWidget::keyPressEvent(event);
}

MarkSubject MarkedWidget::subject(std::size_t item) const {
    const Item shown = markOf(item);
    if (!shown) return {};
    const Mark told = mark(*shown);
    return {told.name, told.value};
}

QRect MarkedWidget::areaOfItem(std::size_t item) const {
    const Item shown = markOf(item);
    return shown ? mark(*shown).area.toAlignedRect() : QRect();
}

bool MarkedWidget::openFile(Item item) {
    const std::string path = item ? pathOf(*item) : std::string();
    if (path.empty()) return false;
    MarkSubject opened = subject(*item);
    opened.path = path;
    MarkMenu::open(this, opened, mapToGlobal(areaOfItem(*item).center()));
    return true;
}

void MarkedWidget::popup(std::size_t item, QPoint globalPosition) {
    MarkSubject shown = subject(item);
    shown.path = pathOf(item);
    QMenu* menu = MarkMenu::popup(this, shown, globalPosition);
    if (menuExtras_) menuExtras_(*menu);
}

void MarkedWidget::contextMenuEvent(QContextMenuEvent* event) {
    const bool byPointer = event->reason() == QContextMenuEvent::Mouse;
    const Item item = byPointer ? menuItemAt(QPointF(event->pos())) : menuItem();
    if (item)
        popup(*item, MarkMenu::place(*this, *event, areaOfItem(*item)));
    else
        event->ignore();
}

void MarkedWidget::showMenu(int mark) {
    const Item item = itemOf(static_cast<std::size_t>(mark));
    if (!item) return;
    bringIntoView(areaOfItem(*item)); // who asks may not see what there is to see
    popup(*item, mapToGlobal(areaOfItem(*item).center()));
}

bool MarkedWidget::canOpenMark(int mark) const {
    const Item item = itemOf(static_cast<std::size_t>(mark));
    return item && !pathOf(*item).empty();
}

void MarkedWidget::openMark(int mark) { openFile(itemOf(static_cast<std::size_t>(mark))); }

void MarkedWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !openFile(itemAt(event->position())))
        QWidget::mouseDoubleClickEvent(event);
}

void MarkedWidget::mouseMoveEvent(QMouseEvent* event) {
    change(itemAt(event->position()), event->position());
}

void MarkedWidget::leaveEvent(QEvent* event) {
    change(std::nullopt, std::nullopt);
    QWidget::leaveEvent(event);
}

void MarkedWidget::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        change(std::nullopt, std::nullopt);
    QWidget::focusOutEvent(event);
    update();
}

} // namespace loadscope
