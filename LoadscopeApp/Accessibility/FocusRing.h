// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QObject>
#include <QRectF>

class QPainter;
class QWidget;

namespace loadscope {

/// Tells whether the user works with the keyboard, which is when a focus ring helps. One for the application;
/// without one, every focus shows its ring.
class KeyboardUse : public QObject {
    Q_OBJECT

public:
    explicit KeyboardUse(QObject* parent = nullptr);
    ~KeyboardUse() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// The ring around the widget that has the keyboard.
namespace FocusRing {

[[nodiscard]] bool isWanted(const QWidget* widget);

/// Paints the ring just inside `area`.
void paint(QPainter& painter, const QRectF& area, double radius, ThemeColor color = ThemeColor::accent);

} // namespace FocusRing
} // namespace loadscope
