// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/PageFrame.h"
#include "LoadscopeCore/History/HistoryActivity.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <QPointer>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

class PushButton;
class RecordedDataCard;
class Sheet;

/// The Trends page: how one repository's startup context has moved over its recorded scans, the newest scans
/// of all repositories, and what can be done with the recorded data. Its cards are made anew whenever what
/// they show has changed.
class TrendsView : public PageFrame {
    Q_OBJECT

public:
    explicit TrendsView(QWidget* parent = nullptr);

    /// `history` is oldest first. `selectedRepositoryPath` is the folder chosen in the sidebar. Costs nothing
    /// when none of them has changed.
    void refresh(const std::vector<RecordedScan>& history,
                 const std::optional<std::string>& selectedRepositoryPath,
                 HistoryActivity activity = HistoryActivity::none);

    /// Asks whether to delete the recorded history; the answer that has the keyboard is No.
    void confirmClear();

Q_SIGNALS:
    /// The recorded history shall be deleted.
    void clearRequested();
    /// The user picked one of the listed scans.
    void repositoryRequested(const std::string& path);

private:
    void build();
    void followInConfirmation();
    [[nodiscard]] bool isLoading() const { return activity_ == HistoryActivity::loading; }

    std::shared_ptr<const TrendsPresentation> presentation_;
    std::optional<std::string> selectedPath_;
    HistoryActivity activity_ = HistoryActivity::none;
    PageHeader* header_;
    QWidget* cards_ = nullptr;
    QPointer<RecordedDataCard> recordedData_;
    QPointer<Sheet> confirmation_;
    QPointer<PushButton> deleteButton_;
};

} // namespace loadscope
