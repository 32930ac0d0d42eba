// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/WindowSplitter.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

namespace loadscope {
namespace {

class Hairline : public QSplitterHandle {
public:
    Hairline(Qt::Orientation orientation, QSplitter* splitter) : QSplitterHandle(orientation, splitter) {
        AccessibleTraits::setRole(this, QAccessible::Separator);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const AppTheme& theme = AppTheme::current();
        QPainter painter(this);
        painter.fillRect(rect(), theme.color(ThemeColor::window));
        painter.fillRect(0, 0, 1, height(), theme.color(ThemeColor::border));
    }
};

constexpr int handleExtent = 4;

} // namespace

WindowSplitter::WindowSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent) {
    setHandleWidth(handleExtent);
    setChildrenCollapsible(false);
    AppTheme::bind(this, [this] { update(); });
}

QSplitterHandle* WindowSplitter::createHandle() { return new Hairline(orientation(), this); }

} // namespace loadscope
