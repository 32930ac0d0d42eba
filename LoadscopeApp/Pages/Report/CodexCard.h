// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"

namespace loadscope {

/// What Codex loads, or why that is not known.
class CodexCard : public ReportSurface {
    Q_OBJECT

public:
    explicit CodexCard(const CodexScanOutcome& outcome, QWidget* parent = nullptr);

private:
    void showResult(const CodexProbeResult& result);
    void addLine(const QString& text);
};

} // namespace loadscope
