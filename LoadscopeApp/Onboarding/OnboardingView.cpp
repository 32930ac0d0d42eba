// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Onboarding/OnboardingView.h"

#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Icons/Picture.h"
#include "LoadscopeApp/Motion/SlideCover.h"
#include "LoadscopeApp/Onboarding/OnboardingPieces.h"
#include "LoadscopeApp/Onboarding/OnboardingStepContent.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int sheetWidth = 544;
constexpr int stageHeight = 330;
constexpr int inset = 27;

} // namespace

OnboardingView::OnboardingView(OnboardingCompletion completion, QWidget* parent)
    : QWidget(parent),
      flow_(completion),
      dots_(new OnboardingStepDots(flow_.stepCount())),
      skip_(new PushButton(PushButton::Kind::plain, QStringLiteral("Skip"))),
      back_(new PushButton(PushButton::Kind::plain, QStringLiteral("Back"))),
      primary_(new PushButton(PushButton::Kind::primary, {})),
      stage_(new QWidget) {
    auto* header = new QHBoxLayout;
    header->addWidget(dots_);
    header->addStretch();
    header->addWidget(skip_);
    auto* footer = new QHBoxLayout;
    footer->addWidget(back_);
    footer->addStretch();
    footer->addWidget(primary_);
    auto* stageRows = new QVBoxLayout(stage_);
    stageRows->setContentsMargins(0, 0, 0, 0);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(inset, 18, inset, 22);
    column->setSpacing(14);
    column->addLayout(header);
    column->addWidget(stage_, 1);
    column->addLayout(footer);
    for (PushButton* kept : {skip_, back_}) {
        // The header and footer keep their height on the steps without these buttons.
        QSizePolicy policy = kept->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        kept->setSizePolicy(policy);
    }

    connect(primary_, &QPushButton::clicked, this, [this] { advance(); });
    connect(back_, &QPushButton::clicked, this, [this] { goBack(); });
    connect(skip_, &QPushButton::clicked, this, [this] { skip(); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, this), &QShortcut::activated, primary_, &QPushButton::click);
    AppTheme::bind(this, [this] {
        setFixedWidth(sheetWidth + (AppTheme::current().scaled(sheetWidth) - sheetWidth) / 2);
        stage_->setMinimumHeight(stageHeight);
    });
    showStep();
}

QWidget* OnboardingView::primaryButton() const { return primary_; }

void OnboardingView::advance() {
    if (flow_.isFinished()) return;
    const QPixmap before = Picture::of(*stage_);
    const int index = flow_.currentIndex();
    flow_.advance();
    if (flow_.currentIndex() != index) {
        showStep();
        slide(before);
    }
    if (flow_.isFinished()) Q_EMIT closeRequested();
}

void OnboardingView::goBack() {
    if (flow_.isFinished()) return;
    const QPixmap before = Picture::of(*stage_);
    flow_.goBack();
    showStep();
    slide(before);
    // The button may just have gone with its step.
    if (!back_->isVisible()) primary_->setFocus(Qt::OtherFocusReason);
}

void OnboardingView::skip() {
    flow_.skip();
    Q_EMIT closeRequested();
}

void OnboardingView::showStep() {
    const OnboardingStep& step = flow_.currentStep();
    dots_->setCurrent(flow_.currentIndex(), DisplayText::own(flow_.progressText()));
    skip_->setVisible(step.showsSkip());
    back_->setVisible(step.showsBack());
    primary_->setTitle(DisplayText::own(step.primaryTitle));
    delete step_;
    step_ = new OnboardingStepContent(step);
    stage_->layout()->addWidget(step_);
    // The layout would show it later, but its picture is taken at once.
    step_->show();
    stage_->layout()->activate();
}

void OnboardingView::slide(const QPixmap& before) {
    SlideCover::start(stage_, before, flow_.direction() == OnboardingFlow::Direction::forward);
}

} // namespace loadscope
