// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/Observers.h"

#include <QWidget>

namespace loadscope {

class ModelPicker;
class PushButton;
class ReadinessModel;
class ReadinessRow;
class ScanModel;
class TextLabel;
class ToggleSwitch;

/// What a scan needs: both tools, the switch for Codex, help with what is chosen more rarely, and a way to
/// check again.
class ScanSetupView : public QWidget {
    Q_OBJECT

public:
    /// Both models must outlive the view. The view follows the readiness by itself; `updateScan` brings it in
    /// line with the scan.
    ScanSetupView(ReadinessModel& readiness, ScanModel& model, QWidget* parent = nullptr);

    void updateScan();

private:
    void updateReadiness();
    [[nodiscard]] QWidget* makeHelp();
    void connectSettings();

    ReadinessModel& readiness_;
    ScanModel& model_;
    ReadinessRow* claude_;
    ReadinessRow* codex_;
    TextLabel* removedSignIn_; ///< why a tool that works elsewhere is signed out here
    ToggleSwitch* includeCodex_;
    ModelPicker* modelPicker_;
    ToggleSwitch* waitsForServers_;
    PushButton* recheck_;
    Subscription subscription_;
};

} // namespace loadscope
