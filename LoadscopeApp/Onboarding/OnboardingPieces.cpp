// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Onboarding/OnboardingPieces.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Motion/BobbingIcon.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int dotSize = 7;
constexpr int dotGap = 4;
constexpr double otherDotOpacity = 0.3;
constexpr int calloutInset = 14;
constexpr int calloutSymbol = 18;
constexpr int pointerSymbol = 22;

/// A rounded card on which the likenesses stand.
class CalloutCard : public QWidget {
public:
    explicit CalloutCard(QWidget* parent = nullptr) : QWidget(parent), row(new QHBoxLayout(this)) {
        // The text needs more room before the round corner than the symbol. Margins are not mirrored.
        const bool mirrored = layoutDirection() == Qt::RightToLeft;
        row->setContentsMargins(calloutInset + (mirrored ? 4 : 0), calloutInset - 2,
                                calloutInset + (mirrored ? 0 : 4), calloutInset - 2);
        row->setSpacing(10);
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        AppTheme::bind(this, [this] { update(); });
    }
    QHBoxLayout* row;

protected:
    void paintEvent(QPaintEvent*) override {
        const AppTheme& theme = AppTheme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(theme.color(ThemeColor::muted));
        painter.setPen(theme.color(ThemeColor::border));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Metrics::cardRadius,
                                Metrics::cardRadius);
    }
};

QHBoxLayout* leadingRow(QWidget* widget) {
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    return row;
}

} // namespace

OnboardingStepDots::OnboardingStepDots(int stepCount, QWidget* parent)
    : QWidget(parent), stepCount_(stepCount) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    AppTheme::bind(this, [this] { update(); });
}

void OnboardingStepDots::setCurrent(int index, const QString& text) {
    currentIndex_ = index;
    setAccessibleName(text);
    update();
}

QSize OnboardingStepDots::sizeHint() const {
    return {stepCount_ * dotSize + (stepCount_ - 1) * dotGap, dotSize};
}

void OnboardingStepDots::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int index = 0; index < stepCount_; ++index) {
        painter.setBrush(index == currentIndex_ ? theme.color(ThemeColor::accent)
                                                : theme.color(ThemeColor::secondaryText, otherDotOpacity));
        const int place = layoutDirection() == Qt::RightToLeft ? stepCount_ - 1 - index : index;
        painter.drawEllipse(QRectF(place * (dotSize + dotGap), 0, dotSize, dotSize));
    }
}

OnboardingToolbarCallout::OnboardingToolbarCallout(QWidget* parent) : QWidget(parent) {
    auto* card = new CalloutCard;
    card->row->addWidget(new IconView(QStringLiteral("folder"), calloutSymbol, ThemeColor::accent));
    auto* label = new TextLabel(QStringLiteral("Choose Repository…"), TextStyle::body);
    label->setWeight(QFont::Medium);
    card->row->addWidget(label);
    QHBoxLayout* row = leadingRow(this);
    row->addWidget(card);
    row->addWidget(new BobbingIcon(QStringLiteral("arrow.up.right"), pointerSymbol, ThemeColor::accent));
    row->addStretch();
}

OnboardingScanCallout::OnboardingScanCallout(QWidget* parent) : QWidget(parent) {
    auto* card = new CalloutCard;
    auto* symbol =
        new IconView(QStringLiteral("arrow.triangle.2.circlepath"), calloutSymbol, ThemeColor::accent);
    symbol->setSpinning(true);
    card->row->addWidget(symbol);
    card->row->addWidget(new TextLabel(QStringLiteral("Scanning repository…"), TextStyle::body));
    QHBoxLayout* row = leadingRow(this);
    row->addWidget(card);
    row->addStretch();
}

} // namespace loadscope
