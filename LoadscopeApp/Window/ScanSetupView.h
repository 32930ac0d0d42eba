// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include <QWidget>

namespace loadscope {

class ModelPicker;
class PushButton;
class ScanModel;
class TextLabel;
class ToggleSwitch;

/// One tool and whether it is ready; read out as one element.
class ReadinessRow : public QWidget {
    Q_OBJECT

public:
    explicit ReadinessRow(const QString& tool, QWidget* parent = nullptr);

    void setReadiness(ToolReadiness readiness);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isStacked(int width) const;

    QString tool_;
    QString value_;
};

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
