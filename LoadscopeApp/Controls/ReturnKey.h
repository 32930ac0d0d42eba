// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

class QAbstractButton;
class QEvent;

namespace loadscope::ReturnKey {

/// Lets Return press the button that has the keyboard, before any shortcut on Return gets it. Call it first
/// in the button's `event`; true when the event was used up.
[[nodiscard]] bool press(QAbstractButton& button, QEvent& event);

} // namespace loadscope::ReturnKey
