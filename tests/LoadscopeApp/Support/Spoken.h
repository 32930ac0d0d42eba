// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

namespace loadscope::testing {

/// Everything that a widget and what is in it tell assistive technologies.
inline void collectSpoken(QAccessibleInterface* element, QStringList& all) {
    if (element == nullptr || !element->isValid() || element->state().invisible) return;
    all.append(element->text(QAccessible::Name));
    for (int index = 0; index < element->childCount(); ++index)
        collectSpoken(element->child(index), all);
}

[[nodiscard]] inline QStringList spoken(QWidget& widget) {
    QStringList all;
    collectSpoken(QAccessible::queryAccessibleInterface(&widget), all);
    return all;
}

} // namespace loadscope::testing
