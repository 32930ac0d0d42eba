// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>

class QWidget;

namespace loadscope {

/// What a painted widget tells of the things on it: assistive technologies are offered each of them as an
/// element of its own. A widget that implements this calls `install` before it is first shown.
class AccessibleMarks {
public:
    virtual ~AccessibleMarks() = default;

    [[nodiscard]] virtual QAccessible::Role marksRole() const { return QAccessible::Chart; }
    [[nodiscard]] virtual int markCount() const = 0;
    [[nodiscard]] virtual QString markText(int mark) const = 0;
    /// What is read out after the text, if there is something.
    [[nodiscard]] virtual QString markValue(int) const { return {}; }
    [[nodiscard]] virtual QAccessible::Role markRole(int) const { return QAccessible::ListItem; }
    /// In the widget's coordinates.
    [[nodiscard]] virtual QRect markArea(int mark) const = 0;
    /// Adds to what is told of a mark's state, such as that it opens.
    virtual void describeMark(int, QAccessible::State&) const {}
    /// A mark that can be toggled offers that as an action.
    [[nodiscard]] virtual bool canToggleMark(int) const { return false; }
    virtual void toggleMark(int) {}
    /// Likewise one that has a menu, and one that is a file to open.
    [[nodiscard]] virtual bool hasMenu(int) const { return false; }
    virtual void showMenu(int) {}
    [[nodiscard]] virtual bool canOpenMark(int) const { return false; }
    virtual void openMark(int) {}
    /// The mark that the keyboard has reached, or -1.
    [[nodiscard]] virtual int currentMark() const { return -1; }

    /// Harmless when repeated.
    static void install();
    /// Tells listeners that the keyboard has reached another mark of `widget`.
    static void tellCurrent(QWidget* widget);
    /// Tells listeners that a mark of `widget` was opened or closed, and with it the marks behind it changed.
    static void tellExpanded(QWidget* widget, int mark);
    /// Tells listeners that other marks of `widget` are shown, or the same in another order.
    static void tellReordered(QWidget* widget);
};

} // namespace loadscope
