// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/AppStyle.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QAccessible>
#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
    // No display, no session bus, no settings of the user's own.
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("LC_ALL", "en_US.UTF-8");
    ::testing::InitGoogleTest(&argumentCount, arguments);
    QApplication application(argumentCount, arguments);
    QApplication::setStyle(new loadscope::AppStyle);
    // As with a screen reader at work, so that every event that the widgets send is gone through.
    QAccessible::setActive(true);
    loadscope::AccessibleTraits::install();
    loadscope::AppTheme theme;
    theme.force(loadscope::Appearance::light, true);
    return RUN_ALL_TESTS();
}
