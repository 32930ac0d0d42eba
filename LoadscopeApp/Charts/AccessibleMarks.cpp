// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/AccessibleMarks.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace loadscope {
namespace {

/// One mark. It exists for as long as its chart; whether it still stands for something changes with the data.
class MarkInterface : public QAccessibleInterface {
public:
    MarkInterface(QWidget* widget, int index) : widget_(widget), index_(index) {}

    bool isValid() const override { return marks() != nullptr && index_ < marks()->markCount(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return widget_ != nullptr ? QAccessible::queryAccessibleInterface(widget_) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? marks()->markText(index_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect area = marks()->markArea(index_);
        return {widget_->mapToGlobal(area.topLeft()), area.size()};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = widget_->focusPolicy() != Qt::NoFocus;
        state.invisible = !widget_->isVisible();
        state.focused = widget_->hasFocus() && marks()->currentMark() == index_;
        return state;
    }

private:
    [[nodiscard]] const AccessibleMarks* marks() const {
        return dynamic_cast<const AccessibleMarks*>(widget_.data());
    }

    QPointer<QWidget> widget_;
    int index_;
};

class MarksInterface : public QAccessibleWidget {
public:
    MarksInterface(QWidget* widget, const AccessibleMarks& marks)
        : QAccessibleWidget(widget, marks.marksRole()), marks_(marks) {}
    ~MarksInterface() override {
        for (const QAccessible::Id id : children_)
            QAccessible::deleteAccessibleInterface(id);
    }

    int childCount() const override { return marks_.markCount(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= marks_.markCount()) return nullptr;
        while (children_.size() <= static_cast<std::size_t>(index)) {
            const int next = static_cast<int>(children_.size());
            children_.push_back(QAccessible::registerAccessibleInterface(new MarkInterface(widget(), next)));
        }
        return QAccessible::accessibleInterface(children_[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (std::size_t index = 0; index < children_.size(); ++index) {
            if (QAccessible::accessibleInterface(children_[index]) == wanted) return static_cast<int>(index);
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        for (int index = 0; index < marks_.markCount(); ++index) {
            if (marks_.markArea(index).contains(point)) return child(index);
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        if (!widget()->hasFocus()) return nullptr;
        return child(marks_.currentMark());
    }

private:
    const AccessibleMarks& marks_;
    mutable std::vector<QAccessible::Id> children_;
};

QAccessibleInterface* create(const QString&, QObject* object) {
    const auto* marks = dynamic_cast<const AccessibleMarks*>(object);
    return marks != nullptr ? new MarksInterface(static_cast<QWidget*>(object), *marks) : nullptr;
}

} // namespace

void AccessibleMarks::install() {
    static const bool installed = (QAccessible::installFactory(create), true);
    Q_UNUSED(installed)
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
