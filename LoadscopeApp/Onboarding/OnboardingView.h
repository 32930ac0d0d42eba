// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include <QPixmap>
#include <QWidget>

namespace loadscope {

class OnboardingStepContent;
class OnboardingStepDots;
class PushButton;

/// The walkthrough: one step at a time, with dots for its place, and buttons to move on, back or out. It asks
/// to be closed when the flow is finished.
class OnboardingView : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingView(OnboardingCompletion completion, QWidget* parent = nullptr);

    [[nodiscard]] const OnboardingFlow& flow() const { return flow_; }
    /// The button that Return presses.
    [[nodiscard]] QWidget* primaryButton() const;

Q_SIGNALS:
    void closeRequested();

private:
    void advance();
    void goBack();
    void skip();
    void showStep();
    void slide(const QPixmap& before);

    OnboardingFlow flow_;
    OnboardingStepDots* dots_;
    PushButton* skip_;
    PushButton* back_;
    PushButton* primary_;
    QWidget* stage_;
    OnboardingStepContent* step_ = nullptr;
};

} // namespace loadscope
