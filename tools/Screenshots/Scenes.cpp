// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Help/HelpButton.h"
#include "LoadscopeApp/Motion/SlideCover.h"
#include "tests/LoadscopeApp/Support/SampleReports.h"
#include "tools/Screenshots/HistoryScenes.h"
#include "tools/Screenshots/Stage.h"

#include <QDir>
#include <QSplitter>

namespace loadscope::screenshots {
namespace {

/// A folder that can be listed, whatever it is called on the pictures.
std::string repository(const QString& name) {
    const QString path = QDir::tempPath() + QStringLiteral("/loadscope-pictures/src/") + name;
    QDir().mkpath(path);
    return path.toStdString();
}

const QString longName = QStringLiteral("a-repository-whose-name-goes-on-and-on-with-<b>markup<b>-in-it");

void press(Stage& stage, const QString& title) {
    for (auto* button : stage.view.findChildren<PushButton*>()) {
        if (button->text() == title && button->isVisible()) button->click();
    }
    stage.settle([&stage] { return stage.view.findChild<SlideCover*>() == nullptr; });
}

Scene onboarding(int step) {
    return {QStringLiteral("onboarding-%1").arg(step), [step](Stage& stage) {
                stage.choose(repository(QStringLiteral("web-app")));
                stage.view.presentOnboarding();
                stage.settle();
                for (int number = 1; number < step; ++number)
                    press(stage, QStringLiteral("Next"));
            }};
}

Scene failure(const QString& name, const ProbeError& error) {
    return {name, [error](Stage& stage) {
                stage.choose(repository(QStringLiteral("web-app")));
                stage.scan(error);
            }};
}

Scene page(const QString& name, AppPage page) {
    return {name, [page](Stage& stage) {
                stage.choose(repository(QStringLiteral("web-app")));
                stage.view.setPage(page);
            }};
}

std::vector<Scene> windowScenes() {
    return {
        {QStringLiteral("overview-idle"),
         [](Stage& stage) {
             stage.readinessAnswer = {ToolReadiness::unknown, ToolReadiness::notInstalled};
             stage.readiness.recheck();
             stage.settle([&stage] { return !stage.readiness.isChecking(); });
         }},
        {QStringLiteral("help-shortcuts"),
         [](Stage& stage) {
             HelpSheets::showShortcuts(stage.view.splitter());
             stage.settle();
         }},
        {QStringLiteral("help-guide"),
         [](Stage& stage) {
             HelpSheets::showGuide(stage.view.splitter());
             stage.settle();
         }},
        {QStringLiteral("help-about"),
         [](Stage& stage) {
             HelpSheets::showAbout(stage.view.splitter());
             stage.settle();
         }},
        {QStringLiteral("overview-long-name"), [](Stage& stage) { stage.choose(repository(longName)); }},
        {QStringLiteral("overview-setup-help"),
         [](Stage& stage) {
             stage.choose(repository(QStringLiteral("web-app")));
             for (auto* button : stage.view.findChildren<DisclosureButton*>())
                 button->setExpanded(true);
         }},
        {QStringLiteral("overview-setup-long"),
         [](Stage& stage) {
             ProbeSettings settings;
             settings.model = "arn:aws:bedrock:eu-central-1:" + std::string(171, '4');
             settings.waitsForServers = true;
             stage.model.setProbeSettings(settings);
             stage.readinessAnswer = {ToolReadiness::signedOut, ToolReadiness::unknown};
             stage.readiness.recheck();
             stage.settle([&stage] { return !stage.readiness.isChecking(); });
             for (auto* button : stage.view.findChildren<DisclosureButton*>())
                 button->setExpanded(true);
         }},
        {QStringLiteral("overview-scanning"),
         [](Stage& stage) {
             stage.choose(repository(QStringLiteral("web-app")));
             stage.model.setIncludeCodex(true);
             stage.scan(testing::FakeProbe::Hang{});
         }},
        failure(QStringLiteral("overview-failed"), ProbeError::NotAuthenticated{}),
        {QStringLiteral("overview-failed-blocked"),
         [](Stage& stage) {
             stage.choose(repository(QStringLiteral("web-app")));
             stage.scan(ProbeError::NotAuthenticated{});
             stage.readinessAnswer = {ToolReadiness::signedOut, ToolReadiness::ready};
             stage.readiness.recheck();
             stage.settle([&stage] { return !stage.readiness.isChecking(); });
         }},
        failure(QStringLiteral("overview-failed-list"),
                ProbeError::CLINotFound{{"/home/dev/.local/bin/claude", "/opt/homebrew/bin/claude",
                                         "/usr/local/bin/claude", "zsh -lc 'command -v claude'"}}),
        failure(QStringLiteral("overview-failed-long"),
                ProbeError::RepositoryUnreadable{"/home/dev/" + std::string(5'000, 'w')}),
        {QStringLiteral("overview-result"),
         [](Stage& stage) {
             stage.tools.instructions->files = testing::sampleFiles();
             stage.choose(repository(QStringLiteral("web-app")));
             stage.model.setIncludeCodex(true);
             stage.scan(testing::sampleResult());
         }},
        page(QStringLiteral("trends-empty"), AppPage::trends),
        page(QStringLiteral("compare-empty"), AppPage::compare),
        onboarding(1),
        onboarding(2),
        onboarding(3),
        onboarding(4),
    };
}

} // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all = [] {
        std::vector<Scene> scenes = windowScenes();
        for (auto* history : {historyScenes, historyEdgeScenes}) {
            for (Scene& scene : history())
                scenes.push_back(std::move(scene));
        }
        return scenes;
    }();
    return all;
}

} // namespace loadscope::screenshots
