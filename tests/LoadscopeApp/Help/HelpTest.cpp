// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Help/GuideView.h"
#include "LoadscopeApp/Help/HelpButton.h"
#include "LoadscopeCore/Presentation/HelpTexts.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QTest>
#include <QTextBrowser>

namespace loadscope::testing {
namespace {

/// Closes the sheet that is up, by its button.
void close(Window& window, const QString& button) {
    ASSERT_NE(window.button(button), nullptr);
    window.button(button)->click();
    EXPECT_TRUE(eventually([&] { return window.view.findChild<Sheet*>() == nullptr; }));
}

TEST(Help, IsReachedFromTheSidebarAndByF1) {
    Window window;
    window.show();
    window.view.activateWindow();
    auto* help = window.view.findChild<HelpButton*>();
    ASSERT_NE(help, nullptr);
    const auto choose = [&](const QString& title) {
        for (QAction* action : help->menu()->actions())
            if (action->text() == title) action->trigger();
    };
    const auto spokenText = [&](const QString& text) { return !spoken(window.view).filter(text).isEmpty(); };

    QTest::keyClick(&window.view, Qt::Key_F1);
    ASSERT_TRUE(eventually([&] { return window.view.findChild<Sheet*>() != nullptr; }));
    EXPECT_TRUE(spokenText("Ctrl+Shift+O"));
    EXPECT_TRUE(spokenText("Open and close a row of the breakdown"));
    QTest::keyClick(window.view.focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return window.view.findChild<Sheet*>() == nullptr; }));

    choose("Keyboard Shortcuts");
    close(window, "OK");
    choose("Walkthrough");
    ASSERT_NE(window.view.onboardingSheet(), nullptr);
    close(window, "Skip");
    choose("About Loadscope");
    EXPECT_TRUE(spokenText(QString::fromStdString(HelpTexts::aboutTitle())));
    window.button("Copy")->click();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        QString::fromStdString(HelpTexts::aboutTitle()) + '\n'));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("Qt 6"));
    EXPECT_TRUE(eventually([&] { return window.view.findChild<Sheet*>() == nullptr; }));
}

TEST(Help, CarriesEveryPageOfTheGuide) {
    GuideView view;
    for (const HelpTexts::GuidePage& page : HelpTexts::guidePages()) {
        const QString name = QString::fromUtf8(page.name.data(), static_cast<qsizetype>(page.name.size()));
        ASSERT_TRUE(view.showPage(name)) << page.name;
        EXPECT_EQ(view.page(), name);
        auto* text = view.findChild<QTextBrowser*>();
        EXPECT_GT(text->toPlainText().size(), 500) << page.name;
        EXPECT_FALSE(text->toHtml().contains("<img")) << page.name;
    }
    // Links between pages are followed, no others.
    auto* text = view.findChild<QTextBrowser*>();
    Q_EMIT text->anchorClicked(QUrl("budgets.md"));
    EXPECT_EQ(view.page(), "budgets");
    for (const char* link : {"https://example.org/x.md", "../../README.md", "file:///etc/passwd.md"})
        Q_EMIT text->anchorClicked(QUrl(link));
    EXPECT_EQ(view.page(), "budgets");
}

TEST(Help, LetsTheFolderDialogBeginWhereTheLastFolderLay) {
    Window window;
    window.show();
    window.view.chooseFolder();
    EXPECT_EQ(window.askedFrom, "");
    window.view.selectFolder("/src/deep/app");
    window.view.chooseFolder();
    EXPECT_EQ(window.askedFrom, "/src/deep");
}

} // namespace
} // namespace loadscope::testing
