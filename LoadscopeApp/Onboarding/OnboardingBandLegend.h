// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

/// What the three bands mean; the rows come in one after the other.
class OnboardingBandLegend : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingBandLegend(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool hasAppeared_ = false;
};

} // namespace loadscope
