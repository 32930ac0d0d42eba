// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/ScanBatchTexts.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <algorithm>

namespace loadscope::ScanBatchTexts {
namespace {

using Item = ScanBatch::Item;
using State = ScanBatch::State;

std::string number(std::ptrdiff_t count) { return LocaleFormat::grouped(static_cast<std::int64_t>(count)); }

} // namespace

std::string state(const Item& item) {
    switch (item.state) {
    case State::waiting:
        return "Waiting";
    case State::running:
    case State::stopping:
        return item.stage;
    case State::done:
        return "Done";
    case State::failed:
        return item.error ? item.error->headline() : "";
    case State::cancelled:
        break;
    }
    return "Stopped";
}

std::string progress(const std::vector<Item>& items) {
    const auto count = [&](const auto& is) { return std::count_if(items.begin(), items.end(), is); };
    const auto in = [&](State state) { return count([&](const Item& item) { return item.state == state; }); };
    const auto all = static_cast<std::ptrdiff_t>(items.size());
    const auto ended = count([](const Item& item) { return item.hasEnded(); });
    const std::string of = " of " + number(all) + (all == 1 ? " folder " : " folders ");
    if (ended < all) return number(ended) + of + "done";
    std::string text = number(in(State::done)) + of + "measured";
    if (const auto failed = in(State::failed); failed > 0) text += ", " + number(failed) + " failed";
    if (const auto stopped = in(State::cancelled); stopped > 0) text += ", " + number(stopped) + " stopped";
    return text;
}

std::string invitation(std::size_t repositories, std::size_t jobs) {
    const std::string count = number(static_cast<std::ptrdiff_t>(repositories));
    const std::string atATime = number(static_cast<std::ptrdiff_t>(jobs)) + " at a time";
    if (repositories == 1) return "Scans the recorded repository once more in Claude Code.";
    return "Scans each of the " + count + " recorded repositories once more in Claude Code, " + atATime + '.';
}

std::string spoken(const Item& item) { return item.selection.displayName + ", " + state(item); }

std::string cancelName(const Item& item) { return "Cancel " + item.selection.displayName; }

} // namespace loadscope::ScanBatchTexts
