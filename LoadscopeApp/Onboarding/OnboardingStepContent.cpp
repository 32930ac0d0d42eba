// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Onboarding/OnboardingStepContent.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/StateIcon.h"
#include "LoadscopeApp/Onboarding/OnboardingBandLegend.h"
#include "LoadscopeApp/Onboarding/OnboardingPieces.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int itemSpacing = 12;
constexpr int pictureGap = 8;

QWidget* picture(OnboardingIllustration illustration) {
    switch (illustration) {
    case OnboardingIllustration::measureIcon:
        return nullptr;
    case OnboardingIllustration::toolbarPointer:
        return new OnboardingToolbarCallout;
    case OnboardingIllustration::scanSpinner:
        return new OnboardingScanCallout;
    case OnboardingIllustration::bandLegend:
        break;
    }
    return new OnboardingBandLegend;
}

} // namespace

OnboardingStepContent::OnboardingStepContent(const OnboardingStep& step, QWidget* parent) : QWidget(parent) {
    auto* texts = new QWidget;
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(itemSpacing);
    column->addStretch(1);
    if (step.illustration == OnboardingIllustration::measureIcon) {
        column->addWidget(new StateIcon(QStringLiteral("scalemass"), ThemeColor::accent), 0,
                          Qt::AlignLeading);
        column->addSpacing(pictureGap);
    }
    auto* title = new TextLabel(DisplayText::own(step.title), TextStyle::title);
    AccessibleTraits::setRole(title, QAccessible::Heading, title->text());
    title->setWraps();
    column->addWidget(title);
    column->addWidget(TextLabel::note(DisplayText::own(step.body), TextStyle::body));
    if (step.footnote) column->addWidget(TextLabel::note(DisplayText::own(*step.footnote)));
    if (QWidget* shown = picture(step.illustration)) {
        column->addSpacing(pictureGap);
        column->addWidget(shown);
    }
    column->addStretch(2);

    // Large texts in a small window scroll.
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->viewport()->setAutoFillBackground(false);
    scroll->setWidget(texts);
    texts->setAutoFillBackground(false);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(scroll);
}

} // namespace loadscope
