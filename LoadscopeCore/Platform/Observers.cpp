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
    struct Observer {
        std::function<void()> tell;
        bool isEnded = false;
    };

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
    const auto owned = std::make_shared<Registry::Observer>(Registry::Observer{std::move(observer)});
    registry_->prune();
    registry_->observers.push_back(owned);
    // While it is told, an observer lives longer than its subscription; the mark keeps it from being told
    // anew.
    return Subscription(std::shared_ptr<void>(nullptr, [owned](std::nullptr_t) { owned->isEnded = true; }));
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
        const auto observer = registry.observers[index].lock();
        if (observer && !observer->isEnded && observer->tell) observer->tell();
    }
}

} // namespace loadscope
