// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace loadscope {

/// Keeps an observer registered for as long as it lives. Outliving the `Observers` is harmless.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

private:
    std::shared_ptr<void> token_;
};

/// The observers of one model. Used on the UI thread only. An observer may end its own or another
/// subscription, add one, or destroy the model, while it is being told: an ended subscription is not told any
/// more, an added one from the next change on.
class Observers {
public:
    Observers();
    ~Observers();
    Observers(const Observers&) = delete;
    Observers& operator=(const Observers&) = delete;

    [[nodiscard]] Subscription add(std::function<void()> observer);
    void notify() const;

private:
    struct Registry;
    std::shared_ptr<Registry> registry_;
};

} // namespace loadscope
