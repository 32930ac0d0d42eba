// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Overview/OverviewStart.h"
#include "tools/Soak/Actions.h"
#include "tools/Soak/Journal.h"
#include "tools/Soak/Waiting.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTest>
#include <QUrl>

namespace loadscope::soak {
namespace {

constexpr int scanLimitMilliseconds = 120'000;

std::string click(QAbstractButton* button) {
    if (button == nullptr) return "no such button now";
    button->click();
    return "clicked";
}

std::string chooseFolder(Stage& stage) {
    std::string path = stage.home.anyFolder(stage.dice);
    const bool asksDialog = stage.dice.oneIn(6);
    stage.window->setNextChoice(asksDialog ? std::optional<std::string>() : path);
    if (stage.dice.oneIn(3)) {
        QTest::keyClick(&stage.view(), Qt::Key_O, Qt::ControlModifier);
    } else {
        click(stage.window->button(QStringLiteral("Choose Repository…")));
    }
    return asksDialog ? "by dialog" : path;
}

std::string dropFolder(Stage& stage) {
    const std::string path = stage.home.anyFolder(stage.dice);
    QMimeData data;
    QList<QUrl> urls{QUrl::fromLocalFile(QFile::decodeName(path.c_str()))};
    if (stage.dice.oneIn(6)) urls.append(QUrl(QStringLiteral("https://example.org/")));
    data.setUrls(urls);
    const QPoint place = stage.view().rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(&stage.view(), &enter);
    runEvents(stage.dice.below(30));
    if (!enter.isAccepted() || stage.dice.oneIn(3)) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&stage.view(), &leave);
        return "left: " + path;
    }
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&stage.view(), &drop);
    return path;
}

std::string openByArgument(Stage& stage) {
    const std::string path = stage.home.anyFolder(stage.dice);
    stage.view().openRepository(path);
    return path;
}

/// By the menu beside the choice of a folder, which the prompts answer, or by a row of the empty Overview.
std::string openRecent(Stage& stage) {
    if (stage.dice.oneIn(2)) {
        QTest::keyClick(&stage.view(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        return "menu";
    }
    stage.view().setPage(AppPage::overview);
    const auto rows = stage.view().findChild<OverviewStart*>()->findChildren<RowButton*>();
    if (rows.empty()) return "none";
    return click(rows.at(stage.dice.below(static_cast<int>(rows.size()))));
}

std::string startScan(Stage& stage) {
    LiveWindow& window = *stage.window;
    if (!window.readiness().permitsScan(window.model().includeCodex())) {
        window.readiness().recheck();
        return "a tool is not ready; rechecks";
    }
    if (!window.model().selection()) stage.view().selectFolder(stage.home.goodFolder(stage.dice));
    if (stage.dice.oneIn(3)) {
        QTest::keyClick(&stage.view(), Qt::Key_R, Qt::ControlModifier);
        return "by key";
    }
    for (const char* title : {"Retry", "Scan Again", "Scan"}) {
        if (auto* button = window.button(QString::fromLatin1(title))) return click(button);
    }
    return "not offered";
}

std::string cancelScan(Stage& stage) {
    runEvents(stage.dice.below(stage.dice.oneIn(3) ? 900 : 40));
    if (stage.dice.oneIn(4)) QTest::keyClick(&stage.view(), Qt::Key_Escape);
    if (stage.dice.oneIn(4)) stage.window->model().cancel();
    return click(stage.window->button(QStringLiteral("Cancel")));
}

std::string awaitScan(Stage& stage) {
    const bool hasEnded = runEventsUntil(
        [&stage] {
            stage.commands.tend();
            return !stage.window->model().isScanTaskRunning();
        },
        scanLimitMilliseconds);
    if (!hasEnded) Journal::current().violated("a scan does not end: " + stage.window->model().scanStage());
    return stage.window->model().scanStage();
}

std::string includeCodex(Stage& stage) {
    if (auto* toggle = stage.window->button(QStringLiteral("Include Codex"))) return click(toggle);
    stage.window->model().setIncludeCodex(!stage.window->model().includeCodex());
    return "in the model";
}

std::string switchPage(Stage& stage) {
    const int page = stage.dice.below(3);
    if (stage.dice.oneIn(2)) {
        stage.view().setPage(static_cast<AppPage>(page));
    } else {
        QTest::keyClick(&stage.view(), static_cast<Qt::Key>(Qt::Key_1 + page), Qt::ControlModifier);
    }
    return std::to_string(page + 1);
}

/// Scans what the history knows, and sometimes stops one or all of it again.
std::string rescanAll(Stage& stage) {
    stage.view().setPage(AppPage::compare);
    for (const char* title : {"Cancel All", "Rescan All"})
        if (auto* button = stage.window->button(QString::fromLatin1(title))) return click(button);
    return "not offered";
}

/// Whatever comes up is answered by the prompts, as every sheet is.
std::string help(Stage& stage) {
    if (stage.dice.oneIn(2)) {
        QTest::keyClick(&stage.view(), Qt::Key_F1);
        return "keys";
    }
    return click(stage.window->button(QStringLiteral("Help")));
}

std::string recheck(Stage& stage) {
    if (auto* button = stage.window->button(QStringLiteral("Recheck setup"))) return click(button);
    stage.window->readiness().recheck();
    return "in the model";
}

std::string onboarding(Stage& stage) {
    stage.view().presentOnboarding();
    return {};
}

std::string clearHistory(Stage& stage) {
    stage.view().setPage(AppPage::trends);
    runEvents(10);
    click(stage.window->button(QStringLiteral("Clear Recorded Data…")));
    runEvents(stage.dice.below(300));
    for (QAbstractButton* button : stage.window->buttons()) {
        const QString title = button->text();
        if (!title.startsWith(QStringLiteral("Delete "))) continue;
        if (stage.dice.oneIn(4)) return click(stage.window->button(QStringLiteral("Cancel"))) + ": Cancel";
        button->click();
        return title.toStdString();
    }
    return "not offered";
}

std::string reopen(Stage& stage) {
    Prompts::closeAll();
    const bool isInScan = stage.window->model().isScanTaskRunning();
    stage.window.reset();
    stage.window = std::make_unique<LiveWindow>(stage.dice, stage.history);
    return isInScan ? "in mid-scan" : "at rest";
}

} // namespace

const std::vector<Action>& windowActions() {
    static const std::vector<Action> all{
        {"choose a folder", 10, true, chooseFolder},
        {"drop a folder", 4, true, dropFolder},
        {"open a folder", 3, true, openByArgument},
        {"open a recent folder", 4, true, openRecent},
        {"scan", 34, true, startScan},
        {"help", 2, true, help},
        {"rescan all", 2, true, rescanAll},
        {"cancel the scan", 8, true, cancelScan},
        {"wait for the scan", 18, false, awaitScan},
        {"include Codex", 4, true, includeCodex},
        {"switch the page", 14, true, switchPage},
        {"recheck", 3, true, recheck},
        {"show the walkthrough", 2, true, onboarding},
        {"clear the history", 1, true, clearHistory},
        {"close and open the window", 3, false, reopen},
    };
    return all;
}

} // namespace loadscope::soak
