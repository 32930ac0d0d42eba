// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

/// One dot per step of the walkthrough, the current one in the accent colour.
class OnboardingStepDots : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingStepDots(int stepCount, QWidget* parent = nullptr);

    /// `text` tells the same in words.
    void setCurrent(int index, const QString& text);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int stepCount_;
    int currentIndex_ = 0;
};

/// A likeness of the toolbar's button with a pointer to where it is.
class OnboardingToolbarCallout : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingToolbarCallout(QWidget* parent = nullptr);
};

/// A likeness of a scan under way.
class OnboardingScanCallout : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingScanCallout(QWidget* parent = nullptr);
};

} // namespace loadscope
