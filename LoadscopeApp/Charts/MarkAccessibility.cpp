// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/MarkAccessibility.h"

#include "LoadscopeApp/Charts/MarkedWidget.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <map>

namespace loadscope::MarkAccessibility {
namespace {

/// One mark. It asks the widget each time, so that it can never tell something old.
class MarkInterface : public QAccessibleInterface {
public:
    MarkInterface(MarkedWidget* widget, int index) : widget_(widget), index_(index) {}

    bool isValid() const override {
        return widget_ != nullptr && static_cast<std::size_t>(index_) < widget_->markCount();
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? widget_->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(widget_); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::Role role() const override { return isValid() ? mark().role : QAccessible::NoRole; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid()) return {};
        if (kind == QAccessible::Name) return mark().name;
        return kind == QAccessible::Value || kind == QAccessible::Description ? mark().value : QString();
    }
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect area = mark().area.toAlignedRect();
        return {widget_->mapToGlobal(area.topLeft()), area.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.readOnly = true;
        state.invisible = !widget_->isVisible();
        const MarkedWidget::Item active = widget_->active();
        const bool isActive =
            active && widget_->markOf(*active) == MarkedWidget::Item(static_cast<std::size_t>(index_));
        state.focusable = true;
        state.selected = isActive;
        state.focused = isActive && widget_->hasFocus();
        return state;
    }

private:
    [[nodiscard]] MarkedWidget::Mark mark() const { return widget_->mark(static_cast<std::size_t>(index_)); }

    QPointer<MarkedWidget> widget_;
    int index_;
};

class MarkedWidgetInterface : public QAccessibleWidget {
public:
    explicit MarkedWidgetInterface(MarkedWidget* widget)
        : QAccessibleWidget(widget, widget->accessibleRole()) {}
    ~MarkedWidgetInterface() override {
        for (const auto& [index, id] : children_)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return static_cast<int>(marked()->markCount()); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        const auto known = children_.find(index);
        if (known != children_.end()) return QAccessible::accessibleInterface(known->second);
        auto* mark = new MarkInterface(marked(), index);
        children_[index] = QAccessible::registerAccessibleInterface(mark);
        return mark;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPointF place = marked()->mapFromGlobal(QPoint(x, y));
        for (int index = 0; index < childCount(); ++index) {
            if (marked()->mark(static_cast<std::size_t>(index)).area.contains(place)) return child(index);
        }
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (const auto& [index, id] : children_) {
            if (QAccessible::accessibleInterface(id) == wanted) return index;
        }
        return -1;
    }
    QAccessibleInterface* focusChild() const override {
        const MarkedWidget::Item active = marked()->active();
        if (!marked()->hasFocus() || !active) return QAccessibleWidget::focusChild();
        const MarkedWidget::Item mark = marked()->markOf(*active);
        return mark ? child(static_cast<int>(*mark)) : nullptr;
    }

private:
    [[nodiscard]] MarkedWidget* marked() const { return static_cast<MarkedWidget*>(widget()); }

    mutable std::map<int, QAccessible::Id> children_;
};

QAccessibleInterface* create(const QString&, QObject* object) {
    auto* widget = qobject_cast<MarkedWidget*>(object);
    return widget == nullptr ? nullptr : new MarkedWidgetInterface(widget);
}

} // namespace

void install() {
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed)
}

} // namespace loadscope::MarkAccessibility
