// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Overview/OverviewPanels.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Icons/StateIcon.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int widestText = 460;
constexpr double detailShare = 0.45; ///< of the page's height, before the detail scrolls

TextLabel* centered(TextLabel* label) {
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setWraps();
    return label;
}

} // namespace

OverviewScanLoadingState::OverviewScanLoadingState(QWidget* parent)
    : CenteredPanel(widestText, parent),
      stage_(centered(new TextLabel({}, TextStyle::headline))),
      cancel_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Cancel"))) {
    AccessibleTraits::setRole(this, QAccessible::Grouping, QStringLiteral("Scan in progress"));
    auto* icon = new StateIcon(QStringLiteral("arrow.triangle.2.circlepath"), ThemeColor::accent);
    icon->setSpinning(true);
    cancel_->setAccessibleName(QStringLiteral("Cancel scan"));
    cancel_->installEventFilter(this);
    held_.setSingleShot(true);
    held_.setInterval(heldMilliseconds);
    connect(&held_, &QTimer::timeout, this, [this] { cancel_->setShortcut(Qt::Key_Escape); });
    // The place of the button stays when it goes, so that the texts do not jump.
    QSizePolicy policy = cancel_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    cancel_->setSizePolicy(policy);
    column()->addWidget(icon, 0, Qt::AlignHCenter);
    column()->addWidget(stage_);
    column()->addWidget(
        centered(new TextLabel(QStringLiteral("Measuring the selected tools and local instruction files."),
                               TextStyle::body, ThemeColor::secondaryText)));
    column()->addWidget(cancel_, 0, Qt::AlignHCenter);
    connect(cancel_, &QPushButton::clicked, this, &OverviewScanLoadingState::cancelRequested);
}

void OverviewScanLoadingState::holdKeys() {
    cancel_->setShortcut({});
    held_.start();
}

bool OverviewScanLoadingState::eventFilter(QObject* watched, QEvent* event) {
    if (held_.isActive() &&
        (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride)) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool presses = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
        if (presses) {
            event->accept();
            return true;
        }
    }
    return CenteredPanel::eventFilter(watched, event);
}

void OverviewScanLoadingState::refresh(const QString& stage, bool canCancel) {
    stage_->setText(stage);
    // Else the keyboard would go to some control outside the page.
    if (!canCancel && cancel_->hasFocus()) setFocus(Qt::OtherFocusReason);
    cancel_->setVisible(canCancel);
}

QWidget* OverviewScanLoadingState::cancelButton() const { return cancel_; }

OverviewScanFailureState::OverviewScanFailureState(QWidget* parent)
    : CenteredPanel(widestText, parent),
      headline_(centered(new TextLabel({}, TextStyle::headline))),
      detail_(new SelectableText({}, TextStyle::body, ThemeColor::secondaryText)),
      retry_(new PushButton(PushButton::Kind::primary, QStringLiteral("Retry"))),
      blocker_(centered(new TextLabel({}, TextStyle::caption, ThemeColor::secondaryText))) {
    AccessibleTraits::setRole(this, QAccessible::Grouping, QStringLiteral("Scan failed"));
    AccessibleTraits::setRole(headline_, QAccessible::Heading);
    detail_->setAccessibleName(QStringLiteral("What happened"));
    retry_->setAccessibleName(QStringLiteral("Retry scan"));
    column()->addWidget(new StateIcon(QStringLiteral("exclamationmark.triangle"), ThemeColor::bandExcessive),
                        0, Qt::AlignHCenter);
    column()->addWidget(headline_);
    column()->addWidget(detail_);
    column()->addWidget(retry_, 0, Qt::AlignHCenter);
    column()->addWidget(blocker_);
    connect(retry_, &QPushButton::clicked, this, &OverviewScanFailureState::retryRequested);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this] {
            if (retry_->isVisible() && retry_->isEnabled()) retry_->animateClick();
        });
}

void OverviewScanFailureState::refresh(const ProbeError& error, const QString& retryBlocker) {
    const QString headline = DisplayText::line(error.headline());
    headline_->setText(headline);
    headline_->setAccessibleName(headline);
    const QString detail = DisplayText::paragraphs(error.detail());
    detail_->setText(detail);
    // A list reads better from the left, where its bullets are; a sentence stands in the middle as the
    // headline does.
    const bool isList = detail.contains(QLatin1Char('\n'));
    detail_->setTextAlignment(isList ? Qt::AlignLeft | Qt::AlignAbsolute : Qt::AlignHCenter);
    column()->setAlignment(detail_, isList ? Qt::AlignHCenter : Qt::Alignment());
    retry_->setAvailable(retryBlocker.isEmpty());
    retry_->setAccessibleDescription(retryBlocker);
    blocker_->setText(retryBlocker);
    blocker_->setVisible(!retryBlocker.isEmpty());
}

QWidget* OverviewScanFailureState::retryButton() const { return retry_; }

void OverviewScanFailureState::resizeEvent(QResizeEvent* event) {
    detail_->setHeightLimit(static_cast<int>(height() * detailShare));
    CenteredPanel::resizeEvent(event);
}

} // namespace loadscope
