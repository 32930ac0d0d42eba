// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QClipboard>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTest>

namespace loadscope::testing {
namespace {

/// The window with its set-up help open and a folder chosen.
class SetupWindow : public Window {
public:
    explicit SetupWindow(ToolReadiness claude = ToolReadiness::ready) : Window({true, {claude, claude}}) {
        show();
        choose();
        for (auto* help : view.findChildren<DisclosureButton*>())
            help->setExpanded(true);
        EXPECT_TRUE(eventually([this] { return other() != nullptr && other()->isVisible(); }));
    }

    [[nodiscard]] QLineEdit* other() const { return view.findChild<QLineEdit*>(); }
    [[nodiscard]] QString checkedModel() const {
        for (const char* name : {"Sonnet", "Opus", "Haiku"}) {
            if (button(name)->isChecked()) return QString::fromLatin1(name);
        }
        return {};
    }
};

TEST(ScanSetup, AsksForAModelByNameOrForOneOfThree) {
    SetupWindow window;
    const auto model = [&] { return window.model.probeSettings().model; };
    EXPECT_EQ(window.checkedModel(), "Sonnet");
    window.button("Opus")->setFocus();
    QTest::keyClick(window.button("Opus"), Qt::Key_Space);
    EXPECT_EQ(model(), "opus");
    QTest::keyClick(window.button("Opus"), Qt::Key_Right);
    EXPECT_EQ(model(), "haiku");

    QTest::keyClicks(window.other(), "opus");
    EXPECT_EQ(model(), "opus");
    EXPECT_EQ(window.other()->text(), "opus") << "more may follow";
    EXPECT_EQ(window.checkedModel(), "");
    QTest::keyClicks(window.other(), "-4 ");
    EXPECT_EQ(model(), "opus-4");
    window.other()->selectAll();
    QTest::keyClick(window.other(), Qt::Key_Delete);
    EXPECT_EQ(model(), "haiku") << "the choice before";
    EXPECT_EQ(window.checkedModel(), "Haiku");

    QTest::keyClicks(window.other(), "--x");
    EXPECT_EQ(model(), "x") << "never an option of the tool";
    QGuiApplication::clipboard()->setText(QStringLiteral(" claude-x\n"));
    window.other()->selectAll();
    window.other()->paste();
    EXPECT_EQ(model(), "claude-x");
    window.button("Sonnet")->click();
    EXPECT_EQ(model(), "sonnet");
    EXPECT_EQ(window.other()->text(), "");
}

TEST(ScanSetup, KeepsItsSettingsWhileAScanRuns) {
    SetupWindow window;
    window.button("Wait for slow servers")->click();
    EXPECT_TRUE(window.model.probeSettings().waitsForServers);
    window.view.startScan();
    for (const char* name : {"Wait for slow servers", "Sonnet", "Opus", "Haiku"})
        EXPECT_FALSE(window.button(name)->isEnabled()) << name;
    EXPECT_FALSE(window.other()->isEnabled());
    window.model.cancel();
    ASSERT_TRUE(eventually([&] { return window.other()->isEnabled(); }));
    EXPECT_TRUE(window.button("Wait for slow servers")->isChecked());
    for (const char* text :
         {"Model", "Other model",
          "A folder's own hooks and servers run in a scan, without a trust question of the tool."})
        EXPECT_TRUE(spoken(window.view).contains(text)) << text;
}

TEST(ScanSetup, TellsTheProbeWhetherTheSignInWasVerified) {
    for (const ToolReadiness claude : {ToolReadiness::ready, ToolReadiness::unknown}) {
        SetupWindow window(claude);
        window.view.startScan();
        EXPECT_TRUE(window.model.state().isScanning());
        EXPECT_EQ(window.model.probeSettings().signInVerified, claude == ToolReadiness::ready);
    }
}

TEST(ScanSetup, NamesTheVariablesThatMightHaveSignedIn) {
    qputenv("ANTHROPIC_API_KEY", "sk-secret");
    const auto forget = qScopeGuard([] { qunsetenv("ANTHROPIC_API_KEY"); });
    const QString named = QStringLiteral("are removed for a scan: ANTHROPIC_API_KEY");
    for (const ToolReadiness claude : {ToolReadiness::signedOut, ToolReadiness::ready}) {
        SetupWindow window(claude);
        const QString all = spoken(window.view).join(QLatin1Char('\n'));
        EXPECT_EQ(all.contains(named), claude == ToolReadiness::signedOut) << qPrintable(all);
        EXPECT_FALSE(all.contains(QStringLiteral("secret")));
    }
}

} // namespace
} // namespace loadscope::testing
