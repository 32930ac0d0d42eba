// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"

#include <QWidget>

namespace loadscope {

/// What a session of Codex starts with, item by item, the instruction files with the bytes that are read, and
/// what has to be said about them.
class CodexItemsTable : public QWidget {
    Q_OBJECT

public:
    explicit CodexItemsTable(const CodexItemsView& items, QWidget* parent = nullptr);
};

} // namespace loadscope
