// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The picture that a step of the walkthrough shows.
enum class OnboardingIllustration { measureIcon, toolbarPointer, scanSpinner, bandLegend };

[[nodiscard]] std::string rawValue(OnboardingIllustration illustration);

/// One page of the walkthrough.
struct OnboardingStep {
    int index = 0;
    std::string title;
    std::string body;
    std::optional<std::string> footnote;
    std::string primaryTitle;
    OnboardingIllustration illustration = OnboardingIllustration::measureIcon;

    [[nodiscard]] bool isFirst() const { return index == 0; }
    [[nodiscard]] bool isLast() const { return index == 3; }
    [[nodiscard]] bool showsBack() const { return !isFirst(); }
    [[nodiscard]] bool showsSkip() const { return !isLast(); }
    bool operator==(const OnboardingStep&) const = default;
};

/// One row of the band legend on the last step.
struct OnboardingLegendEntry {
    OpinionBand band = OpinionBand::lean;
    std::string detail;

    [[nodiscard]] std::string id() const { return OpinionBands::rawValue(band); }
    [[nodiscard]] std::string title() const { return OpinionBands::title(band); }
    /// "Lean: fine as-is", for assistive technologies.
    [[nodiscard]] std::string spoken() const { return title() + ": " + detail; }
    bool operator==(const OnboardingLegendEntry&) const = default;
};

/// Keeps whether the walkthrough was completed, under `onboardingCompletedKey`; an absent value reads as
/// false.
class OnboardingCompletionStore {
public:
    static constexpr const char* onboardingCompletedKey = "hasCompletedOnboarding";
    virtual ~OnboardingCompletionStore() = default;
    [[nodiscard]] virtual bool onboardingCompleted() const = 0;
    virtual void setOnboardingCompleted(bool completed) = 0;
};

/// Whether the walkthrough has been finished or skipped once. `store` must outlive it.
class OnboardingCompletion {
public:
    explicit OnboardingCompletion(OnboardingCompletionStore& store) : store_(&store) {}
    [[nodiscard]] bool isComplete() const { return store_->onboardingCompleted(); }
    [[nodiscard]] bool shouldPresent() const { return !isComplete(); }
    void markComplete() { store_->setOnboardingCompleted(true); }

private:
    OnboardingCompletionStore* store_;
};

/// The walkthrough: its four steps and the moves between them.
class OnboardingFlow {
public:
    enum class Direction { forward, backward };

    explicit OnboardingFlow(OnboardingCompletion completion) : completion_(completion) {}

    [[nodiscard]] static const std::vector<OnboardingStep>& steps();
    [[nodiscard]] static const std::vector<OnboardingLegendEntry>& legend();

    [[nodiscard]] int currentIndex() const { return currentIndex_; }
    [[nodiscard]] Direction direction() const { return direction_; }
    [[nodiscard]] bool isFinished() const { return isFinished_; }
    [[nodiscard]] const OnboardingStep& currentStep() const {
        return steps()[static_cast<std::size_t>(currentIndex_)];
    }
    [[nodiscard]] int stepCount() const { return static_cast<int>(steps().size()); }
    /// "Step 1 of 4".
    [[nodiscard]] std::string progressText() const;
    [[nodiscard]] bool shouldPresent() const { return completion_.shouldPresent(); }

    /// To the next step; on the last one marks the walkthrough completed and finishes.
    void advance();
    /// To the step before; nothing on the first.
    void goBack();
    void skip() { finish(); }
    void finish();

private:
    OnboardingCompletion completion_;
    int currentIndex_ = 0;
    Direction direction_ = Direction::forward;
    bool isFinished_ = false;
};

} // namespace loadscope
