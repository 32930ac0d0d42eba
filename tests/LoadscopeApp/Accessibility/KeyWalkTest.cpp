// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/KeyWalk.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

using KeyWalk::Policy;
using Stop = std::optional<std::size_t>;

TEST(KeyWalk, EndsAndBeginsAsItsPolicySays) {
    struct Case {
        Policy policy;
        Stop on[4];   ///< a key that leads on, from nowhere, from the first, the middle and the last of three
        Stop back[4]; ///< a key that leads back, likewise
    };
    const Case cases[] = {
        {{}, {0, 1, 2, 0}, {2, 2, 0, 1}},
        {{Policy::Ends::stop}, {0, 1, 2, 2}, {2, 0, 0, 1}},
        {{Policy::Ends::stop, Policy::Start::first}, {0, 1, 2, 2}, {0, 0, 0, 1}},
        {{Policy::Ends::stop, Policy::Start::last, false}, {2, 1, 2, 2}, {2, 0, 0, 1}},
    };
    const Stop from[] = {{}, 0, 1, 2};
    const auto step = [](int key, Qt::LayoutDirection direction, Stop current, const Policy& policy) {
        const QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        return KeyWalk::step(event, direction, 3, current, policy);
    };
    for (const Case& test : cases) {
        for (int index = 0; index < 4; ++index) {
            const auto go = [&](int key, Qt::LayoutDirection direction = Qt::LeftToRight) {
                return step(key, direction, from[index], test.policy);
            };
            EXPECT_EQ(go(Qt::Key_Right), test.on[index]);
            EXPECT_EQ(go(Qt::Key_Left), test.back[index]);
            EXPECT_EQ(go(Qt::Key_Right, Qt::RightToLeft), test.back[index]);
            EXPECT_EQ(go(Qt::Key_Left, Qt::RightToLeft), test.on[index]);
            EXPECT_EQ(go(Qt::Key_Down, Qt::RightToLeft),
                      test.policy.takesUpAndDown ? test.on[index] : std::nullopt);
            EXPECT_EQ(go(Qt::Key_Up), test.policy.takesUpAndDown ? test.back[index] : std::nullopt);
            EXPECT_EQ(go(Qt::Key_Home), 0U);
            EXPECT_EQ(go(Qt::Key_End), 2U);
            EXPECT_EQ(go(Qt::Key_Return), std::nullopt);
        }
    }
    const QKeyEvent end(QEvent::KeyPress, Qt::Key_End, Qt::NoModifier);
    EXPECT_EQ(KeyWalk::step(end, Qt::LeftToRight, 0, {}, {}), std::nullopt) << "nothing to walk";
}

} // namespace
} // namespace loadscope::testing
