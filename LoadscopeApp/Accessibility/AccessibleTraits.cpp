// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/AccessibleTraits.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QVariant>

namespace loadscope::AccessibleTraits {
namespace {

constexpr const char* roleProperty = "accessibleRole";
constexpr const char* leafProperty = "accessibleLeaf";
constexpr const char* valueProperty = "accessibleValue";
constexpr const char* menuProperty = "accessibleMenu";
constexpr const char* expandedProperty = "accessibleExpanded";

/// A widget as its traits describe it. A button keeps its press action.
class TraitsInterface : public QAccessibleWidget {
public:
    explicit TraitsInterface(QWidget* widget)
        : QAccessibleWidget(widget, static_cast<QAccessible::Role>(widget->property(roleProperty).toInt())) {}

    int childCount() const override {
        return widget()->property(leafProperty).toBool() ? 0 : QAccessibleWidget::childCount();
    }
    QAccessibleInterface* child(int index) const override {
        return widget()->property(leafProperty).toBool() ? nullptr : QAccessibleWidget::child(index);
    }
    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value) return widget()->property(valueProperty).toString();
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            if (const QAbstractButton* button = asButton()) return button->text();
        }
        return QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const QVariant expanded = widget()->property(expandedProperty);
        if (expanded.isValid()) {
            state.expandable = true;
            state.expanded = expanded.toBool();
            state.collapsed = !expanded.toBool();
        }
        if (role() == QAccessible::Dialog) state.modal = true;
        return state;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (asButton() != nullptr && widget()->isEnabled()) names.prepend(pressAction());
        if (widget()->property(menuProperty).toBool()) names.append(showMenuAction());
        return names;
    }
    void doAction(const QString& name) override {
        if (name == pressAction() && asButton() != nullptr && widget()->isEnabled())
            asButton()->click();
        else if (name == showMenuAction() && widget()->property(menuProperty).toBool())
            showMenu();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    /// As the Menu key does.
    void showMenu() {
        const QPoint middle = widget()->rect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, widget()->mapToGlobal(middle));
        QCoreApplication::sendEvent(widget(), &event);
    }

    [[nodiscard]] QAbstractButton* asButton() const { return qobject_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* create(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->property(roleProperty).isValid()) return nullptr;
    return new TraitsInterface(widget);
}

} // namespace

void install() {
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed)
}

void setRole(QWidget* widget, QAccessible::Role role, const QString& name) {
    install();
    widget->setProperty(roleProperty, static_cast<int>(role));
    // A text set earlier has made the toolkit keep an interface of its own for the widget; drop that one.
    if (QAccessibleInterface* kept = QAccessible::queryAccessibleInterface(widget))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(kept));
    if (!name.isEmpty()) widget->setAccessibleName(name);
}

void setLeaf(QWidget* widget) { widget->setProperty(leafProperty, true); }

void setValue(QWidget* widget, const QString& value) {
    // No event of its own: the toolkit's event for values carries numbers only.
    widget->setProperty(valueProperty, value);
}

void setExpanded(QWidget* widget, bool expanded) {
    widget->setProperty(expandedProperty, expanded);
    if (!QAccessible::isActive()) return;
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
}

void setHasMenu(QWidget* widget) { widget->setProperty(menuProperty, true); }

void setDecoration(QWidget* widget) {
    setRole(widget, QAccessible::Graphic);
    setLeaf(widget);
}

} // namespace loadscope::AccessibleTraits
