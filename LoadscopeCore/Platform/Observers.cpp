// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Observers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace loadscope {

/// The subscriptions own the observers; the registry only knows them. It outlives a running `notify`, even
/// when an observer destroys the model that tells it.
struct Observers::Registry {
    using Observer = std::function<void()>;

    std::vector<std::weak_ptr<const Observer>> observers;
    int notifications = 0;
    bool isClosed = false;

    /// Forgets the ended ones, unless a running notification counts on their places.
    void prune() {
        if (notifications > 0) return;
        std::erase_if(observers, [](const auto& observer) { return observer.expired(); });
    }
};

Observers::Observers() : registry_(std::make_shared<Registry>()) {}

Observers::~Observers() { registry_->isClosed = true; }

Subscription Observers::add(std::function<void()> observer) {
    const auto owned = std::make_shared<Registry::Observer>(std::move(observer));
    registry_->prune();
    registry_->observers.push_back(owned);
    return Subscription(owned);
}

void Observers::notify() const {
    struct Running {
        std::shared_ptr<Registry> registry;
        explicit Running(std::shared_ptr<Registry> of) : registry(std::move(of)) {
            ++registry->notifications;
        }
        ~Running() {
            --registry->notifications;
            registry->prune();
        }
    };
    const Running running(registry_);
    Registry& registry = *running.registry;
    // An observer that is added meanwhile has seen the change; it is told of the next one.
    const std::size_t count = registry.observers.size();
    for (std::size_t index = 0; index < count && !registry.isClosed; ++index) {
        if (const auto observer = registry.observers[index].lock(); observer && *observer) (*observer)();
    }
}

} // namespace loadscope
