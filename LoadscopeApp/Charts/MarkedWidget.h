// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Accessibility/KeyWalk.h"
#include "LoadscopeApp/Charts/AccessibleMarks.h"

#include <QWidget>

#include <cstddef>
#include <optional>

namespace loadscope {

/// A widget that paints many things of its own: sectors, tiles, rows. One of them can be active, because the
/// pointer is over it or because the arrow keys went there. Assistive technologies see the marks as children
/// with a name, a value and a place. An item is what can become active; a mark is what is read out.
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

    [[nodiscard]] Item active() const { return active_; }
    /// Makes another item active, for example because it is active in another view of the same thing.
    void setActive(Item item);

    [[nodiscard]] QAccessible::Role marksRole() const final { return role_; }
    [[nodiscard]] QString markText(int index) const final;
    [[nodiscard]] QString markValue(int index) const final;
    [[nodiscard]] QRect markArea(int index) const final;
    [[nodiscard]] QAccessible::Role markRole(int index) const final;
    [[nodiscard]] int currentMark() const final;

Q_SIGNALS:
    void activeChanged(Item item);

protected:
    /// How many stops the arrow keys have, and which item is at a stop.
    [[nodiscard]] virtual std::size_t stopCount() const = 0;
    [[nodiscard]] virtual std::size_t itemAtStop(std::size_t stop) const { return stop; }
    [[nodiscard]] virtual Item stopOf(std::size_t item) const { return item; }
    [[nodiscard]] virtual KeyWalk::Policy walk() const { return {}; }
    [[nodiscard]] virtual Item itemAt(QPointF point) const = 0;
    /// Called after `active` changed; repaints what looks different now. `place` is where the pointer is, and
    /// absent when the change came from elsewhere.
    virtual void activeMoved(Item before, std::optional<QPointF> place) = 0;

    /// Makes the item at a stop active as the arrow keys do: it comes into view and is read out.
    void walkTo(std::size_t stop);

    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void change(Item item, std::optional<QPointF> place);
    QAccessible::Role role_;
    Item active_;
};

} // namespace loadscope
