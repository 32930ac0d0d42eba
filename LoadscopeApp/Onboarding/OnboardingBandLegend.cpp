// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Onboarding/OnboardingBandLegend.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int rowMilliseconds = 280;
constexpr int rowDelayMilliseconds = 60;
constexpr int chipWidth = 82;
constexpr int chipPadding = 5;
constexpr int gap = 12;
constexpr double rise = 6;

/// One band: its title on a chip, then what it means. Painted, so that it can fade in by itself.
class LegendRow : public QWidget {
public:
    explicit LegendRow(const OnboardingLegendEntry& entry)
        : title_(DisplayText::own(entry.title())),
          detail_(DisplayText::own(entry.detail)),
          tint_(ThemeColors::text(entry.band)),
          appear_(new ValueAnimation(this, 1, [this](double) { update(); })) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        AccessibleTraits::setRole(this, QAccessible::StaticText, DisplayText::own(entry.spoken()));
        AppTheme::bind(this, [this] {
            updateGeometry();
            update();
        });
    }

    void appearAfter(int milliseconds) {
        appear_->jumpTo(0);
        QTimer::singleShot(milliseconds, this,
                           [this] { appear_->animateTo(1, rowMilliseconds, QEasingCurve::OutQuad); });
    }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics(AppTheme::current().font(TextStyle::body));
        return {AppTheme::current().scaled(chipWidth) + gap + metrics.horizontalAdvance(detail_),
                metrics.height() + 2 * chipPadding};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const AppTheme& theme = AppTheme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(appear_->value());
        painter.translate(0, rise * (1 - appear_->value()));
        const QRect chip(0, 0, theme.scaled(chipWidth), height());
        const QRect detail(chip.right() + 1 + gap, 0, width() - chip.width() - gap, height());
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.tint(tint_));
        const QRect placed = QStyle::visualRect(layoutDirection(), rect(), chip);
        painter.drawRoundedRect(placed, height() / 2.0, height() / 2.0);
        painter.setFont(theme.font(TextStyle::subheadline, QFont::Medium));
        painter.setPen(theme.color(tint_));
        ReadingText::draw(painter, placed, Qt::AlignCenter, title_);
        painter.setFont(theme.font(TextStyle::body));
        painter.setPen(theme.color(ThemeColor::secondaryText));
        ReadingText::draw(painter, QStyle::visualRect(layoutDirection(), rect(), detail),
                          Qt::AlignVCenter | Qt::AlignLeading, detail_);
    }

private:
    QString title_;
    QString detail_;
    ThemeColor tint_;
    ValueAnimation* appear_;
};

} // namespace

OnboardingBandLegend::OnboardingBandLegend(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    for (const OnboardingLegendEntry& entry : OnboardingFlow::legend())
        column->addWidget(new LegendRow(entry));
}

void OnboardingBandLegend::showEvent(QShowEvent*) {
    if (hasAppeared_ || AppTheme::current().reducedMotion()) return;
    hasAppeared_ = true;
    for (int index = 0; index < layout()->count(); ++index)
        static_cast<LegendRow*>(layout()->itemAt(index)->widget())->appearAfter(index * rowDelayMilliseconds);
}

} // namespace loadscope
