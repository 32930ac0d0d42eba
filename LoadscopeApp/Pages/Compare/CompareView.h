// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/PageFrame.h"
#include "LoadscopeCore/History/HistoryActivity.h"
#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <optional>
#include <string>
#include <vector>

namespace loadscope {

class CardPager;
class ChoiceCard;
class LeaderboardCard;
class RescanCard;

/// The Compare page: repositories ranked per tool, and their latest scans side by side. Its cards are made
/// anew whenever the history has changed.
class CompareView : public PageFrame {
    Q_OBJECT

public:
    explicit CompareView(QWidget* parent = nullptr);

    /// `history` is oldest first. Costs nothing when it has not changed.
    void refresh(const std::vector<RecordedScan>& history, HistoryActivity activity = HistoryActivity::none);

    [[nodiscard]] RescanCard* rescanCard() const { return rescan_; }

Q_SIGNALS:
    /// The user picked one of the ranked repositories.
    void repositoryRequested(const std::string& path);

private:
    void buildRanking(const ComparePresentation& shown);
    void build(const ComparePresentation& shown);
    void choose(const ComparePresentation::Choice& choice);

    std::optional<std::vector<RecordedScan>> history_;
    bool isLoading_ = false;
    RescanCard* rescan_;
    ChoiceCard* choiceCard_;
    CardPager* pager_;
    ComparePresentation::Choice choice_; ///< kept as long as the window
    QWidget* leaderboard_;               ///< where the ranking stands
    LeaderboardCard* ranking_ = nullptr; ///< of the history that is shown
    QWidget* cards_ = nullptr;
};

} // namespace loadscope
