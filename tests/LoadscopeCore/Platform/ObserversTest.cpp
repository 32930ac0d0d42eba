// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Observers.h"

#include "tests/Support/Testing.h"

namespace {

TEST(Observers, TellsThoseThatAreSubscribedInOrder) {
    Observers observers;
    std::string told;
    Subscription first = observers.add([&] { told += "a"; });
    const Subscription second = observers.add([&] { told += "b"; });
    observers.notify();
    first = {};
    observers.notify();
    EXPECT_EQ(told, "abb");
}

TEST(Observers, MayChangeWhileTheyAreTold) {
    Observers observers;
    std::string told;
    std::vector<Subscription> subscriptions(3);
    const std::string longText(100, 'x');
    subscriptions[0] = observers.add([&, longText] {
        subscriptions[0] = {}; // its own: what it captured must stay until it returns
        subscriptions[1] = {};
        for (int index = 0; index < 100; ++index)
            subscriptions.push_back(observers.add([&] { told += "n"; }));
        told += longText.front();
        observers.notify();
    });
    subscriptions[1] = observers.add([&] { told += "never"; });
    subscriptions[2] = observers.add([&] { told += "c"; });
    observers.notify();
    EXPECT_EQ(told, "xc" + std::string(100, 'n') + "c");
}

TEST(Observers, MayBeDestroyedByAnObserverAndBeforeTheirSubscriptions) {
    auto observers = std::make_unique<Observers>();
    int told = 0;
    const Subscription first = observers->add([&] {
        ++told;
        observers.reset();
    });
    const Subscription second = observers->add([&] { ++told; });
    observers->notify();
    EXPECT_EQ(told, 1);
}

} // namespace
