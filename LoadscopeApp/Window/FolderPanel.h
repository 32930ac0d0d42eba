// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

class QWidget;

namespace loadscope::FolderPanel {

/// Opens the desktop's panel for choosing one folder over `window`, at `start` unless that is empty, and
/// returns at once; `done` gets the path when one is chosen.
void open(QWidget* window, const std::string& start, std::function<void(std::string path)> done);

} // namespace loadscope::FolderPanel
