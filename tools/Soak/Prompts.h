// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Soak/Dice.h"
#include "tools/Soak/SoakHome.h"

#include <QTimer>

class QFileDialog;

namespace loadscope::soak {

/// Answers what asks over the window: menus and message boxes as soon as they are up, also those that block
/// their caller in an event loop of their own; file dialogs when it is told to.
class Prompts {
public:
    Prompts(const SoakHome& home, Dice& dice);

    /// The file dialog that is up, else null.
    [[nodiscard]] static QFileDialog* fileDialog();
    /// Whether something is up that keeps the user from the window.
    [[nodiscard]] static bool areUp();

    /// Accepts the file dialog with some path, or closes it; tells which.
    std::string answerFileDialog();
    /// Closes whatever is up.
    static void closeAll();

private:
    void look();

    const SoakHome& home_;
    Dice& dice_;
    QTimer timer_;
};

} // namespace loadscope::soak
