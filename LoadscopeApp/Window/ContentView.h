// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Pages/Report/CodexCard.h"
#include "LoadscopeApp/Window/AppPage.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Scan/KeptReports.h"
#include "LoadscopeCore/Scan/RecentFolders.h"
#include "LoadscopeCore/Scan/ScanBatch.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QSplitter;
class QStackedWidget;

namespace loadscope {

class CodexEstimateModel;
class CompareView;
class FindBar;
class OnboardingCompletionStore;
class OverviewView;
class ReadinessModel;
class ScanModel;
class Sheet;
class Sidebar;
class TrendsView;
class WindowToolbar;

/// The window: a toolbar over the sidebar and the selected page. It shows what the models say and passes on
/// what the user does; of its own it holds the selected page, the walkthrough, and the reports of this run,
/// so that a folder that was measured shows its report again.
class ContentView : public QWidget {
    Q_OBJECT

public:
    /// Asks the user for a folder, from the folder `start` on unless that is empty, and calls `done` with its
    /// path when one was chosen.
    using FolderChooser = std::function<void(QWidget* window, const std::string& start,
                                             std::function<void(std::string path)> done)>;

    static constexpr int onboardingDelayMilliseconds = 300;

    /// The models and the store must outlive the window.
    ContentView(ScanModel& model, ReadinessModel& readiness, OnboardingCompletionStore& onboarding,
                FolderChooser chooser);
    ~ContentView() override;

    /// Who estimates what Codex would load; without one there is no button for it. Must outlive the window.
    void setCodexEstimates(CodexEstimateModel& estimates);

    /// Who remembers the folders to go back to. Must outlive the window.
    void setRecentFolders(RecentFolders& recent);

    /// What scans every recorded repository once more. Must outlive the window.
    void setBatch(ScanBatch& batch);

    /// The size of the very first window where a screen has so much room.
    [[nodiscard]] static QSize firstSize(QSize available);

    [[nodiscard]] AppPage page() const { return page_; }
    void setPage(AppPage page);

    void chooseFolder();
    /// Makes the folder the selection and brings the Overview page forward; ignored while a scan runs.
    void selectFolder(const std::string& path);
    void startScan();
    /// Selects the folder of a recorded scan, unless it is selected, and shows Overview when it has something
    /// to show of it, else Trends; says so when a scan is in the way.
    void openRepository(const std::string& path);

    [[nodiscard]] QSplitter* splitter() const { return splitter_; }
    /// The walkthrough's sheet while it is up, else null.
    [[nodiscard]] Sheet* onboardingSheet() const;
    void presentOnboarding();

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void layOut();
    void connectAll();
    void refresh();
    void refreshPage();
    void refreshRecent();
    void refreshRescan();
    [[nodiscard]] bool mayScan() const;
    void rescanAll();
    /// Takes over what scans of the batch have measured since the last time.
    void followBatch();
    /// What was measured of the selection in this run, while the model has nothing of it; else null.
    [[nodiscard]] const KeptReports::Kept* keptReport() const;
    [[nodiscard]] CodexCard::Estimate codexEstimate() const;
    /// Says so when the history could not be deleted.
    void followClearing();

    ScanModel& model_;
    ReadinessModel& readiness_;
    OnboardingCompletionStore& onboarding_;
    FolderChooser chooser_;
    AppPage page_ = AppPage::overview;
    bool wasShown_ = false;
    bool isClearing_ = false;
    KeptReports keptReports_;
    ScanBatch* batch_ = nullptr;
    Subscription batchSubscription_;
    std::vector<std::shared_ptr<const ScanReport>> batchReports_; ///< those that were taken over
    RecentFolders* recent_ = nullptr;
    Subscription recentSubscription_;
    std::vector<RecordedScan> recentHistory_; ///< of which the recent folders know

    QWidget* content_; ///< everything but sheets
    WindowToolbar* toolbar_;
    QSplitter* splitter_;
    Sidebar* sidebar_;
    QStackedWidget* pages_;
    FindBar* find_;
    OverviewView* overview_;
    TrendsView* trends_ = nullptr;   ///< made when it is first selected
    CompareView* compare_ = nullptr; ///< likewise
    QPointer<Sheet> sheet_;
    Subscription modelSubscription_;
    Subscription readinessSubscription_;
    CodexEstimateModel* codexEstimates_ = nullptr;
    Subscription codexSubscription_;
};

} // namespace loadscope
