// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/UUID.h"
#include "tests/Support/Testing.h"

#include <fcntl.h>
#include <set>

namespace {

TEST(UUID, TakesTheCanonicalTextInAnyCase) {
    const std::string canonical = "0F8FAD5B-D9CB-469F-A165-70867728950E";
    for (const auto* text : {"0f8fad5b-d9cb-469f-a165-70867728950e", "0F8FAD5B-D9CB-469f-A165-70867728950E"})
        EXPECT_EQ(UUID::parse(text).value_or(UUID::generate()).text(), canonical);
    const std::string rest = canonical.substr(1);
    EXPECT_EQ(taken(UUID::parse, "{" + canonical + "}", canonical + "\n", rest, std::string(36, 'A'),
                    "G" + rest, "g" + rest, "`" + rest, canonical.substr(0, 9) + "-69F-A165-70867728950E1",
                    ""),
              "");
}

TEST(UUID, GeneratesDistinctRandomIdentifiers) {
    std::set<UUID> seen;
    std::set<char> variants, digits;
    for (int round = 0; round < 1000; ++round) {
        const UUID uuid = UUID::generate();
        EXPECT_EQ(UUID::parse(uuid.text()), uuid);
        EXPECT_EQ(uuid.text()[14], '4');
        variants.insert(uuid.text()[19]);
        digits.insert(uuid.text()[15]);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
    EXPECT_THAT(variants, ElementsAre('8', '9', 'A', 'B'));
    EXPECT_EQ(digits.size(), 16U);
}

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

TEST(FileDescriptor, ClosesWhatItOwnsOnce) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    FileDescriptor reading(ends[0]), writing(ends[1]), second = writing.duplicate();
    EXPECT_NE(::fcntl(second.get(), F_GETFD) & FD_CLOEXEC, 0);
    char byte = 0;
    writing = std::move(second);
    EXPECT_EQ(::write(writing.get(), "x", 1), 1);
    EXPECT_EQ(::fcntl(ends[1], F_GETFD), -1);
    errno = ENOENT;
    writing.close();
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(::read(reading.get(), &byte, 1), 1);
    EXPECT_EQ(::read(reading.get(), &byte, 1), 0) << "a writing end is still open";
    EXPECT_FALSE(writing.duplicate().isOpen());
    EXPECT_TRUE(FileDescriptor(::dup(0)).isOpen() && FileDescriptor(reading.release()).isOpen());
}

} // namespace
