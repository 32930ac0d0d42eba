// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CenteredPanel.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <QTimer>

namespace loadscope {

class PushButton;
class SelectableText;
class TextLabel;

/// Shown while a scan runs: its stage, and Cancel for as long as it can be cancelled. In the first moment
/// Cancel takes no key: one that was meant for what started the scan shall not end it.
class OverviewScanLoadingState : public CenteredPanel {
    Q_OBJECT

public:
    static constexpr int heldMilliseconds = 500;

    explicit OverviewScanLoadingState(QWidget* parent = nullptr);

    /// A scan begins.
    void holdKeys();
    void refresh(const QString& stage, bool canCancel);
    [[nodiscard]] QWidget* cancelButton() const;

Q_SIGNALS:
    void cancelRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TextLabel* stage_;
    PushButton* cancel_;
    QTimer held_;
};

/// Shown after a scan that failed: what happened, what to do, and Retry, or why that cannot be done now.
class OverviewScanFailureState : public CenteredPanel {
    Q_OBJECT

public:
    explicit OverviewScanFailureState(QWidget* parent = nullptr);

    void refresh(const ProbeError& error, const QString& retryBlocker);
    [[nodiscard]] QWidget* retryButton() const;

Q_SIGNALS:
    void retryRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    TextLabel* headline_;
    SelectableText* detail_;
    PushButton* retry_;
    TextLabel* blocker_;
};

} // namespace loadscope
