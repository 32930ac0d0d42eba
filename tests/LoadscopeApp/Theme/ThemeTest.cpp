// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/DesktopAppearance.h"

#include <QDBusVariant>
#include <QMenu>

#include <gtest/gtest.h>

#include <vector>

namespace loadscope {
namespace {

/// Gives the theme of the test program back its usual settings.
struct Restore {
    ~Restore() {
        AppTheme::current().setDesktopPreferences({}, {});
        AppTheme::current().force(Appearance::light, true);
    }
};

TEST(ThemeColors, KeepTextsReadableOnEverySurfaceThatCarriesThem) {
    using enum ThemeColor;
    const std::vector<ThemeColor> inks{primaryText, secondaryText, accent,
                                       bandLean,    bandHeavy,     bandExcessive};
    const Restore restore;
    for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
        AppTheme::current().force(appearance, true);
        const AppTheme& theme = AppTheme::current();
        const auto contrast = [&theme](ThemeColor ink, const QColor& ground) {
            return ThemeColors::contrast(theme.color(ink), ground);
        };
        for (const ThemeColor ink : inks) {
            for (const ThemeColor ground : {window, sidebar, card})
                EXPECT_GE(contrast(ink, theme.color(ground)), 4.5) << int(ink) << " on " << int(ground);
            if (ink != primaryText) {
                EXPECT_GE(contrast(ink, theme.tint(ink)), 4.5) << int(ink) << " on its pill";
            }
        }
        EXPECT_GE(contrast(onAccent, theme.color(accent)), 4.5);
        EXPECT_GE(contrast(secondaryText, theme.color(muted)), 4.5);
    }
}

TEST(ThemeColors, ColourTheSeriesByAppearanceAndRepeatAfterFive) {
    EXPECT_EQ(ThemeColors::chart(0, Appearance::light), QColor("#0F766E"));
    EXPECT_EQ(ThemeColors::chart(0, Appearance::dark), QColor("#2DD4BF"));
    EXPECT_EQ(ThemeColors::chart(5, Appearance::dark), QColor("#2DD4BF"));
    EXPECT_NE(ThemeColors::chart(4, Appearance::light), ThemeColors::chart(5, Appearance::light));
}

TEST(AppTheme, ColoursTheMenusOfTheToolkitToo) {
    const Restore restore;
    for (const Appearance appearance : {Appearance::dark, Appearance::light}) {
        AppTheme::current().force(appearance, true);
        QMenu menu;
        menu.ensurePolished();
        EXPECT_EQ(menu.palette().color(QPalette::Window), AppTheme::current().color(ThemeColor::window));
    }
}

TEST(DesktopAppearance, PassesOnWhatTheSettingsPortalSays) {
    const QString appearance = "org.freedesktop.appearance";
    struct Case {
        const char* name;
        QString nameSpace;
        QString key;
        QVariant value;
        Appearance expected;
        bool reduced;
    };
    const QVariant darkInVariants = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(1U))));
    const std::vector<Case> cases{
        {"dark", appearance, "color-scheme", 1U, Appearance::dark, false},
        {"dark, wrapped twice", appearance, "color-scheme", darkInVariants, Appearance::dark, false},
        {"light", appearance, "color-scheme", 2U, Appearance::light, false},
        {"no preference falls back to the palette", appearance, "color-scheme", 0U, Appearance::light, false},
        {"a value of another kind", appearance, "color-scheme", "dark", Appearance::light, false},
        {"less motion", appearance, "reduced-motion", 1U, Appearance::light, true},
        {"animations off", "org.gnome.desktop.interface", "enable-animations", false, Appearance::light,
         true},
        {"a setting of somebody else", "org.example", "color-scheme", 1U, Appearance::light, false},
    };
    const Restore restore;
    for (const Case& testCase : cases) {
        AppTheme::current().setDesktopPreferences({}, {});
        AppTheme::current().force({}, {});
        DesktopAppearance desktop;
        desktop.apply(testCase.nameSpace, testCase.key, testCase.value);
        EXPECT_EQ(AppTheme::current().appearance(), testCase.expected) << testCase.name;
        EXPECT_EQ(AppTheme::current().reducedMotion(), testCase.reduced) << testCase.name;
    }
}

TEST(AppTheme, TellsOncePerChangeAndLetsAForcedAppearanceWin) {
    const Restore restore;
    int told = 0;
    QObject context;
    QObject::connect(&AppTheme::current(), &AppTheme::changed, &context, [&told] { ++told; });
    AppTheme::current().setDesktopPreferences(Appearance::dark, false);
    EXPECT_EQ(told, 0); // forced light by the test program
    AppTheme::current().force({}, true);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(AppTheme::current().isDark());
    AppTheme::current().setDesktopPreferences(Appearance::dark, false);
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace loadscope
