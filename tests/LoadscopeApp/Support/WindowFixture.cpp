// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/AtomicFile.h"

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

FakeTools Window::toolsWith(const std::vector<RecordedScan>& history) const {
    FakeTools fakes;
    if (history.empty()) return fakes;
    fakes.history = std::make_shared<ScanHistoryStore>(data.path().toStdString());
    EXPECT_TRUE(AtomicFile::write(fakes.history->filePath(), ScanHistoryFile::encode(history)));
    return fakes;
}

} // namespace loadscope::testing
