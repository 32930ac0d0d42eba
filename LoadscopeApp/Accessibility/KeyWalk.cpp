// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/KeyWalk.h"

#include <QKeyEvent>

namespace loadscope::KeyWalk {
namespace {

/// 1 for an arrow that leads on, -1 for one that leads back, 0 for another key.
int arrow(int key, Qt::LayoutDirection direction, const Policy& policy) {
    const int toTheRight = direction == Qt::RightToLeft ? -1 : 1;
    if (key == Qt::Key_Right) return toTheRight;
    if (key == Qt::Key_Left) return -toTheRight;
    if (!policy.takesUpAndDown) return 0;
    if (key == Qt::Key_Down) return 1;
    return key == Qt::Key_Up ? -1 : 0;
}

std::size_t start(int arrow, std::size_t last, const Policy& policy) {
    if (policy.start == Policy::Start::either) return arrow > 0 ? 0 : last;
    return policy.start == Policy::Start::first ? 0 : last;
}

std::size_t beside(std::size_t stop, int arrow, std::size_t last, const Policy& policy) {
    const bool isAtEnd = stop == (arrow > 0 ? last : 0);
    if (!isAtEnd) return arrow > 0 ? stop + 1 : stop - 1;
    if (policy.ends == Policy::Ends::stop) return stop;
    return arrow > 0 ? 0 : last;
}

} // namespace

std::optional<std::size_t> step(const QKeyEvent& event, Qt::LayoutDirection direction, std::size_t stops,
                                std::optional<std::size_t> current, const Policy& policy) {
    if (stops == 0) return {};
    const std::size_t last = stops - 1;
    if (event.key() == Qt::Key_Home) return 0;
    if (event.key() == Qt::Key_End) return last;
    const int way = arrow(event.key(), direction, policy);
    if (way == 0) return {};
    return current ? beside(*current, way, last, policy) : start(way, last, policy);
}

} // namespace loadscope::KeyWalk
