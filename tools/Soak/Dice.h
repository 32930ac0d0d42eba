// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>

namespace loadscope::soak {

/// Every choice of a run, from one seed: the same seed gives the same choices in the same order.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// From 0 to `count` - 1; 0 when `count` is not positive.
    [[nodiscard]] int below(int count) {
        return count > 0 ? std::uniform_int_distribution(0, count - 1)(engine_) : 0;
    }
    [[nodiscard]] int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }

    /// One element of a container that is not empty.
    template <typename Container>
    [[nodiscard]] auto& pick(Container& container) {
        return container[static_cast<typename Container::size_type>(
            below(static_cast<int>(container.size())))];
    }

private:
    std::mt19937_64 engine_;
};

} // namespace loadscope::soak
