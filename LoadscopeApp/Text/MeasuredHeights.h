// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

namespace loadscope {

/// The heights of one text at the widths asked for lately. Nested layouts ask for the same few over and over,
/// and breaking a text into lines is the dearest part of bringing the window up.
class MeasuredHeights {
public:
    void forget() { heights_ = {}; }

    /// The height at `width`, from `measure(width)` when it is not known.
    template <typename Measure>
    int at(int width, const Measure& measure) {
        for (const Entry& entry : heights_) {
            if (entry.height >= 0 && entry.width == width) return entry.height;
        }
        Entry& oldest = heights_[next_];
        next_ = (next_ + 1) % heights_.size();
        oldest = {width, measure(width)};
        return oldest.height;
    }

private:
    struct Entry {
        int width = 0;
        int height = -1; ///< below 0: not in use
    };
    std::array<Entry, 6> heights_{};
    std::size_t next_ = 0;
};

} // namespace loadscope
