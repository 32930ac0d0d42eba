// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include <QWidget>

namespace loadscope {

/// One step of the walkthrough: its texts and its picture.
class OnboardingStepContent : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingStepContent(const OnboardingStep& step, QWidget* parent = nullptr);
};

} // namespace loadscope
