// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QAccessible>

namespace loadscope::testing {

namespace {

bool accessibleTreeSays(QAccessibleInterface* element, const QString& text) {
    if (element == nullptr || !element->isValid() || element->state().invisible) return false;
    if (element->text(QAccessible::Name) == text || element->text(QAccessible::Value) == text) return true;
    for (int index = 0; index < element->childCount(); ++index) {
        if (accessibleTreeSays(element->child(index), text)) return true;
    }
    return false;
}

} // namespace

bool Window::says(const QString& text) const {
    return accessibleTreeSays(QAccessible::queryAccessibleInterface(const_cast<ContentView*>(&view)), text);
}

} // namespace loadscope::testing
