// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

#include <cstddef>
#include <optional>

class QKeyEvent;

/// How keys walk what one widget paints: the arrows lead to the next and the one before, Home and End to the
/// ends.
namespace loadscope::KeyWalk {

struct Policy {
    enum class Ends { wrap, stop };
    /// Where the arrows begin when nothing was reached yet: at the end that they come from, or always at one.
    enum class Start { either, first, last };

    Ends ends = Ends::wrap;
    Start start = Start::either;
    bool takesUpAndDown = true; ///< else they are left to whatever scrolls
};

/// Where a key leads; nothing for a key that leads nowhere and so is for others.
[[nodiscard]] std::optional<std::size_t> step(const QKeyEvent& event, Qt::LayoutDirection direction,
                                              std::size_t stops, std::optional<std::size_t> current,
                                              const Policy& policy);

} // namespace loadscope::KeyWalk
