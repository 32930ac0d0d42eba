// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QImage>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <cmath>

namespace loadscope {
namespace {

TEST(PushButton, IsPressedByReturnBeforeAShortcutAndKeepsItsOwnShortcut) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* button = new PushButton(PushButton::Kind::secondary, "Choose");
    column->addWidget(button);
    int shortcuts = 0;
    QObject::connect(new QShortcut(Qt::Key_Return, &window), &QShortcut::activated,
                     [&shortcuts] { ++shortcuts; });
    window.show();
    window.activateWindow();
    button->setFocus();
    QSignalSpy clicked(button, &QPushButton::clicked);
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(shortcuts, 0);
    button->setShortcut(Qt::CTRL | Qt::Key_O);
    button->setTitle("Changed");
    EXPECT_EQ(button->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
}

TEST(PushButton, ShowsThatItHasTheKeyboardOnEveryFill) {
    using enum PushButton::Kind;
    QWidget window;
    auto* row = new QVBoxLayout(&window);
    for (const auto kind : {primary, secondary, destructive, plain})
        row->addWidget(new PushButton(kind, "Retry"));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const auto appearance : {Appearance::light, Appearance::dark}) {
        AppTheme::current().force(appearance, true);
        for (auto* button : window.findChildren<PushButton*>()) {
            window.setFocus();
            const QImage before = button->grab().toImage();
            button->setFocus();
            const QImage after = button->grab().toImage();
            int changed = 0;
            for (int x = 0; x < after.width(); ++x) {
                for (int y = 0; y < after.height(); ++y)
                    changed += std::abs(qGray(before.pixel(x, y)) - qGray(after.pixel(x, y))) > 40 ? 1 : 0;
            }
            EXPECT_GT(changed, after.width() + after.height()) << row->indexOf(button);
        }
    }
    AppTheme::current().force(Appearance::light, true);
}

} // namespace
} // namespace loadscope
