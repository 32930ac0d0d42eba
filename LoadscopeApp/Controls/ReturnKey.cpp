// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/ReturnKey.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace loadscope {

bool ReturnKey::press(QAbstractButton& button, QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride && event.type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isReturn || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
    event.accept();
    if (event.type() == QEvent::KeyPress && !key.isAutoRepeat()) button.click();
    return true;
}

} // namespace loadscope
