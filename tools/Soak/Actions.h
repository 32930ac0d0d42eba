// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Soak/Commands.h"
#include "tools/Soak/Dice.h"
#include "tools/Soak/HistoryWatch.h"
#include "tools/Soak/LiveWindow.h"
#include "tools/Soak/Prompts.h"
#include "tools/Soak/SoakHome.h"

#include <memory>
#include <string>
#include <vector>

namespace loadscope::soak {

/// Everything that an action may touch.
struct Stage {
    Stage(Dice& theDice, const SoakHome& theHome)
        : dice(theDice),
          home(theHome),
          history(home.historyFile()),
          commands(home, history),
          prompts(home, dice),
          window(std::make_unique<LiveWindow>(dice, history)) {}

    [[nodiscard]] ContentView& view() const { return window->view(); }

    Dice& dice;
    const SoakHome& home;
    HistoryWatch history;
    Commands commands;
    Prompts prompts;
    std::unique_ptr<LiveWindow> window;
};

/// Something that can happen, and how often it does compared with others.
struct Action {
    const char* kind;
    int weight;
    bool needsUser;                       ///< cannot be done while a dialog keeps the user from the window
    std::string (*perform)(Stage& stage); ///< tells what exactly was done
};

[[nodiscard]] const std::vector<Action>& windowActions(); ///< folders, scans, pages, the window itself
[[nodiscard]] const std::vector<Action>& pageActions();   ///< pointer, keys, buttons and sections on a page
[[nodiscard]] const std::vector<Action>& outerActions();  ///< files, tools, commands, the desktop

} // namespace loadscope::soak
