// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Actions.h"

#include "LoadscopeApp/Theme/AppTheme.h"

namespace loadscope::soak {
namespace {

std::string runCommand(Stage& stage) { return stage.commands.start(stage.dice); }

std::string answerDialog(Stage& stage) { return stage.prompts.answerFileDialog(); }

std::string tamperWithHistory(Stage& stage) { return stage.history.tamper(stage.dice); }

std::string breakTool(Stage& stage) { return stage.home.breakTool(stage.dice); }

std::string repairTools(Stage& stage) {
    stage.home.repairTools();
    return {};
}

std::string resize(Stage& stage) {
    Dice& dice = stage.dice;
    const QSize sizes[] = {{1180, 780}, {1, 1}, {320, 200}, {2400, 1400}, {960, 640}};
    const QSize size =
        dice.oneIn(2) ? sizes[dice.below(5)] : QSize(dice.between(1, 1900), dice.between(1, 1200));
    // Below the least size that it asks for, too, as some window managers do.
    stage.view().setMinimumSize(1, 1);
    stage.view().resize(size);
    return std::to_string(size.width()) + " by " + std::to_string(size.height());
}

std::string changeAppearance(Stage& stage) {
    Dice& dice = stage.dice;
    const bool isDark = dice.oneIn(2);
    AppTheme::current().force(isDark ? Appearance::dark : Appearance::light, dice.oneIn(2));
    // Few scales, as the toolkit keeps every font that was ever asked for.
    if (dice.oneIn(3)) AppTheme::current().setTextScale(dice.between(4, 12) / 5.0);
    return (isDark ? "dark, text " : "light, text ") + std::to_string(AppTheme::current().scaled(100)) + " %";
}

std::string changeWindowState(Stage& stage) {
    const Qt::WindowStates states[] = {Qt::WindowNoState, Qt::WindowMaximized, Qt::WindowMinimized,
                                       Qt::WindowFullScreen, Qt::WindowNoState};
    const int chosen = stage.dice.below(5);
    stage.view().setWindowState(states[chosen]);
    if (chosen != 2) stage.view().activateWindow();
    return std::to_string(chosen);
}

std::string changeDirection(Stage& stage) {
    const bool isReversed = stage.dice.oneIn(3);
    stage.view().setLayoutDirection(isReversed ? Qt::RightToLeft : Qt::LeftToRight);
    return isReversed ? "right to left" : "left to right";
}

} // namespace

const std::vector<Action>& outerActions() {
    static const std::vector<Action> all{
        {"run the command", 6, false, runCommand},
        {"answer a file dialog", 12, false, answerDialog},
        {"tamper with the history", 2, false, tamperWithHistory},
        {"break a tool", 1, false, breakTool},
        {"repair the tools", 4, false, repairTools},
        {"resize the window", 8, false, resize},
        {"change the appearance", 4, false, changeAppearance},
        {"change the window's state", 2, false, changeWindowState},
        {"change the direction", 1, false, changeDirection},
    };
    return all;
}

} // namespace loadscope::soak
