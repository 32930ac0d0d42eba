// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"

#include <optional>

namespace loadscope {

/// What Codex loads, or why that is not known. A measured total opens to its items. Where Codex was not
/// included, its items can be estimated without a session.
class CodexCard : public ReportSurface {
    Q_OBJECT

public:
    /// How far an estimate has got.
    struct Estimate {
        bool canAsk = false; ///< somebody hears the request
        bool isRunning = false;
        bool isCancelling = false;
        std::optional<CodexItems> items{};

        bool operator==(const Estimate&) const = default;
    };

    explicit CodexCard(const CodexScanOutcome& outcome, QWidget* parent = nullptr);

    void showEstimate(const Estimate& estimate);

Q_SIGNALS:
    void estimateRequested();
    void cancelRequested();

private:
    void showResult(const CodexProbeResult& result);
    void addLine(const QString& text);
    [[nodiscard]] QWidget* makeEstimate(const Estimate& estimate);

    bool canBeEstimated_ = false; ///< this scan did not ask Codex
    Estimate estimate_;
    QWidget* estimatePart_ = nullptr;
};

} // namespace loadscope
