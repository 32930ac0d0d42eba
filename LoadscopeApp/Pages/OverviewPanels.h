// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Components/CenteredPanel.h"
#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

namespace loadscope {

class PushButton;
class SelectableText;
class TextLabel;

/// Shown while a scan runs: its stage, and Cancel for as long as it can be cancelled.
class OverviewScanLoadingState : public CenteredPanel {
    Q_OBJECT

public:
    explicit OverviewScanLoadingState(QWidget* parent = nullptr);

    void refresh(const QString& stage, bool canCancel);
    [[nodiscard]] QWidget* cancelButton() const;

Q_SIGNALS:
    void cancelRequested();

private:
    TextLabel* stage_;
    PushButton* cancel_;
};

/// Shown after a scan that failed: what happened, what to do, and Retry.
class OverviewScanFailureState : public CenteredPanel {
    Q_OBJECT

public:
    explicit OverviewScanFailureState(QWidget* parent = nullptr);

    void refresh(const ProbeError& error, bool canRetry);
    [[nodiscard]] QWidget* retryButton() const;

Q_SIGNALS:
    void retryRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    TextLabel* headline_;
    SelectableText* detail_;
    PushButton* retry_;
};

} // namespace loadscope
