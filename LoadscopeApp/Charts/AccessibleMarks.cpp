// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/AccessibleMarks.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>

#include <map>

namespace loadscope {
namespace {

/// The marks of a widget; null for one that has none, and while it is being destroyed.
AccessibleMarks* marksOf(QWidget* widget) { return dynamic_cast<AccessibleMarks*>(widget); }

/// One mark. It exists for as long as its widget and asks it each time, so that it never tells something old.
class MarkInterface : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    MarkInterface(QWidget* widget, int index) : widget_(widget), index_(index) {}

    bool isValid() const override { return marks() != nullptr && index_ < marks()->markCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? widget_->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override {
        return widget_ != nullptr ? QAccessible::queryAccessibleInterface(widget_) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        if (!isValid()) return {};
        if (kind == QAccessible::Name) return marks()->markText(index_);
        const bool isValue = kind == QAccessible::Value || kind == QAccessible::Description;
        return isValue ? marks()->markValue(index_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect area = marks()->markArea(index_);
        return {widget_->mapToGlobal(area.topLeft()), area.size()};
    }
    QAccessible::Role role() const override {
        return isValid() ? marks()->markRole(index_) : QAccessible::NoRole;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = widget_->focusPolicy() != Qt::NoFocus;
        state.invisible = !widget_->isVisible();
        state.selected = marks()->currentMark() == index_;
        state.focused = state.selected && widget_->hasFocus();
        marks()->describeMark(index_, state);
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        const bool acts = type == QAccessible::ActionInterface && !actionNames().isEmpty();
        return acts ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override {
        QStringList names;
        if (!isValid()) return names;
        if (marks()->canToggleMark(index_)) names.append(toggleAction());
        if (marks()->canOpenMark(index_)) names.append(pressAction());
        if (marks()->hasMenu(index_)) names.append(showMenuAction());
        return names;
    }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name)) return;
        if (name == toggleAction())
            marks()->toggleMark(index_);
        else if (name == pressAction())
            marks()->openMark(index_);
        else
            marks()->showMenu(index_);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    [[nodiscard]] AccessibleMarks* marks() const { return marksOf(widget_); }

    QPointer<QWidget> widget_;
    int index_;
};

class MarksInterface : public QAccessibleWidget {
public:
    MarksInterface(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}
    ~MarksInterface() override {
        for (const auto& [index, id] : children_)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return marks() != nullptr ? marks()->markCount() : 0; }

    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        const auto known = children_.find(index);
        if (known != children_.end()) return QAccessible::accessibleInterface(known->second);
        auto* mark = new MarkInterface(widget(), index);
        children_[index] = QAccessible::registerAccessibleInterface(mark);
        return mark;
    }

    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [index, id] : children_) {
            if (QAccessible::accessibleInterface(id) == wanted) return index;
        }
        return -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        for (int index = 0; index < childCount(); ++index) {
            if (marks()->markArea(index).contains(point)) return child(index);
        }
        return nullptr;
    }

    QAccessibleInterface* focusChild() const override {
        const int current = marks() != nullptr && widget()->hasFocus() ? marks()->currentMark() : -1;
        return current >= 0 ? child(current) : QAccessibleWidget::focusChild();
    }

private:
    [[nodiscard]] const AccessibleMarks* marks() const { return marksOf(widget()); }

    mutable std::map<int, QAccessible::Id> children_;
};

QAccessibleInterface* create(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const AccessibleMarks* marks = marksOf(widget);
    return marks != nullptr ? new MarksInterface(widget, marks->marksRole()) : nullptr;
}

} // namespace

void AccessibleMarks::install() {
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed)
}

void AccessibleMarks::tellExpanded(QWidget* widget, int mark) {
    if (!QAccessible::isActive()) return;
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    QAccessibleInterface* child = spoken != nullptr ? spoken->child(mark) : nullptr;
    if (child == nullptr) return;
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(child, changed);
    QAccessible::updateAccessibility(&event);
    tellReordered(widget);
}

void AccessibleMarks::tellReordered(QWidget* widget) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent reordered(widget, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&reordered);
}

void AccessibleMarks::tellCurrent(QWidget* widget) {
    if (!QAccessible::isActive()) return;
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    QAccessibleInterface* mark = spoken != nullptr ? spoken->focusChild() : nullptr;
    if (mark == nullptr) return;
    QAccessibleEvent event(mark, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

} // namespace loadscope
