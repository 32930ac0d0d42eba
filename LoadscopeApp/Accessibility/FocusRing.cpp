// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/FocusRing.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

namespace loadscope {
namespace {

constexpr double ringWidth = 2;
bool keyboardInUse = true;

/// A key that is taken as a shortcut never comes as a press.
bool isKey(QEvent::Type type) { return type == QEvent::KeyPress || type == QEvent::ShortcutOverride; }

bool isNavigation(const QKeyEvent& event) {
    return event.key() != Qt::Key_Control && event.key() != Qt::Key_Shift && event.key() != Qt::Key_Alt &&
           event.key() != Qt::Key_Meta;
}

} // namespace

KeyboardUse::KeyboardUse(QObject* parent) : QObject(parent) {
    keyboardInUse = false;
    qApp->installEventFilter(this);
}

KeyboardUse::~KeyboardUse() { keyboardInUse = true; }

bool KeyboardUse::eventFilter(QObject* watched, QEvent* event) {
    bool inUse = keyboardInUse;
    if (event->type() == QEvent::MouseButtonPress)
        inUse = false;
    else if (isKey(event->type()) && isNavigation(*static_cast<QKeyEvent*>(event)))
        inUse = true;
    if (inUse != keyboardInUse) {
        keyboardInUse = inUse;
        if (QWidget* focus = QApplication::focusWidget()) focus->update();
    }
    return QObject::eventFilter(watched, event);
}

bool FocusRing::isWanted(const QWidget* widget) { return keyboardInUse && widget->hasFocus(); }

void FocusRing::paint(QPainter& painter, const QRectF& area, double radius, ThemeColor color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(AppTheme::current().color(color), ringWidth));
    const double inset = ringWidth / 2;
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

} // namespace loadscope
