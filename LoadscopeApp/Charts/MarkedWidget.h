// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Accessibility/KeyWalk.h"
#include "LoadscopeApp/Charts/AccessibleMarks.h"
#include "LoadscopeApp/Controls/MarkMenu.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace loadscope {

/// A widget that paints many things of its own: sectors, tiles, rows. One of them can be active, because the
/// pointer is over it or because the arrow keys went there. Assistive technologies see the marks as children
/// with a name, a value and a place. An item is what can become active; a mark is what is read out. Each item
/// has a menu, by the right button, the Menu key or an action of its mark; one that is a file opens by a
/// double click or with Return.
class MarkedWidget : public QWidget, public AccessibleMarks {
    Q_OBJECT

public:
    using Item = std::optional<std::size_t>;

    struct Mark {
        QString name;
        QString value;
        QRectF area; ///< in the widget
        QAccessible::Role role = QAccessible::Graphic;
    };

    MarkedWidget(QAccessible::Role role, QWidget* parent);

    [[nodiscard]] virtual Mark mark(std::size_t index) const = 0;
    /// The mark that stands for an item.
    [[nodiscard]] virtual Item markOf(std::size_t item) const { return item; }
    /// The item that a mark stands for, if it stands for one.
    [[nodiscard]] virtual Item itemOf(std::size_t mark) const { return mark; }

    /// The name and the number of an item, as its menu copies them.
    [[nodiscard]] virtual MarkSubject subject(std::size_t item) const;
    /// Tells the file of an item, or an empty text. Asked only when somebody wants to use it.
    using PathOf = std::function<std::string(std::size_t item)>;
    void setPaths(PathOf paths) { paths_ = std::move(paths); }
    [[nodiscard]] std::string pathOf(std::size_t item) const { return paths_ ? paths_(item) : std::string(); }
    /// Adds entries of the place in which the widget stands to its menus.
    void setMenuExtras(std::function<void(QMenu&)> extras) { menuExtras_ = std::move(extras); }

    [[nodiscard]] Item active() const { return active_; }
    /// Makes another item active, for example because it is active in another view of the same thing.
    void setActive(Item item);

    [[nodiscard]] QAccessible::Role marksRole() const final { return role_; }
    [[nodiscard]] QString markText(int index) const final;
    [[nodiscard]] QString markValue(int index) const final;
    [[nodiscard]] QRect markArea(int index) const final;
    [[nodiscard]] QAccessible::Role markRole(int index) const final;
    [[nodiscard]] int currentMark() const override;
    [[nodiscard]] bool hasMenu(int mark) const final {
        return itemOf(static_cast<std::size_t>(mark)).has_value();
    }
    void showMenu(int mark) final;
    [[nodiscard]] bool canOpenMark(int mark) const override;
    void openMark(int mark) override;

Q_SIGNALS:
    void activeChanged(Item item);

protected:
    /// How many stops the arrow keys have, and which item is at a stop.
    [[nodiscard]] virtual std::size_t stopCount() const = 0;
    [[nodiscard]] virtual std::size_t itemAtStop(std::size_t stop) const { return stop; }
    [[nodiscard]] virtual Item stopOf(std::size_t item) const { return item; }
    [[nodiscard]] virtual KeyWalk::Policy walk() const { return {}; }
    [[nodiscard]] virtual Item itemAt(QPointF point) const = 0;
    /// The item whose menu is wanted, at a place or by the keyboard.
    [[nodiscard]] virtual Item menuItemAt(QPointF point) const { return itemAt(point); }
    [[nodiscard]] virtual Item menuItem() const { return active_; }
    /// Called after `active` changed; repaints what looks different now. `place` is where the pointer is, and
    /// absent when the change came from elsewhere.
    virtual void activeMoved(Item before, std::optional<QPointF> place) = 0;

    /// Scrolls the page so that a place in the widget can be seen.
    void bringIntoView(const QRectF& area) const;
    /// What covers the upper edge of the widget while the page is scrolled.
    [[nodiscard]] virtual int roomAbove() const { return 0; }
    /// Makes the item at a stop active as the arrow keys do: it comes into view and is read out.
    void walkTo(std::size_t stop);

    /// Opens the file of an item; false for one without.
    bool openFile(Item item);

    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void change(Item item, std::optional<QPointF> place);
    [[nodiscard]] QRect areaOfItem(std::size_t item) const;
    void popup(std::size_t item, QPoint globalPosition);

    QAccessible::Role role_;
    Item active_;
    PathOf paths_;
    std::function<void(QMenu&)> menuExtras_;
};

} // namespace loadscope
