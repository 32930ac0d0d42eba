// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/PushButton.h"

namespace loadscope {

/// The way to what the window tells of itself: a button with a menu.
class HelpButton : public PushButton {
    Q_OBJECT

public:
    explicit HelpButton(QWidget* parent = nullptr);

Q_SIGNALS:
    void walkthroughRequested();
};

/// What the menu opens, each as a sheet over the window of `anchor`.
namespace HelpSheets {

void showShortcuts(QWidget* anchor);
void showGuide(QWidget* anchor);
void showAbout(QWidget* anchor);

} // namespace HelpSheets
} // namespace loadscope
