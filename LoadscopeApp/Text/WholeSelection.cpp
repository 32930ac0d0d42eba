// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/WholeSelection.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <utility>

namespace loadscope {
namespace {

constexpr double selectionOpacity = 0.16;

} // namespace

WholeSelection::WholeSelection(QWidget* widget, std::function<QString()> text)
    : QObject(widget), widget_(widget), text_(std::move(text)) {
    widget->setFocusPolicy(Qt::ClickFocus);
    widget->setCursor(Qt::IBeamCursor);
    widget->installEventFilter(this);
}

void WholeSelection::select(bool selected) {
    isSelected_ = selected;
    widget_->update();
}

void WholeSelection::paint(QPainter& painter, const QRectF& area, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::current().color(ThemeColor::accent, selectionOpacity));
    painter.drawRoundedRect(area, radius, radius);
    painter.restore();
}

bool WholeSelection::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) break;
        widget_->setFocus(Qt::MouseFocusReason);
        select(true);
        return true;
    case QEvent::KeyPress:
        if (!isSelected_ || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) break;
        QGuiApplication::clipboard()->setText(text_());
        return true;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) select(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace loadscope
