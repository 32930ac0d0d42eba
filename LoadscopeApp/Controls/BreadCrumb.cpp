// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/BreadCrumb.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QHBoxLayout>

namespace loadscope {
namespace {

constexpr int gap = 4;
constexpr int mostCharacters = 28; ///< of a step; the whole name is told to assistive technologies

QString shortened(const QString& step) {
    return step.size() <= mostCharacters ? step : step.left(mostCharacters - 1) + QChar(0x2026);
}

} // namespace

BreadCrumb::BreadCrumb(const QString& name, QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
    AccessibleTraits::setRole(this, QAccessible::Grouping, name);
    row_->setContentsMargins(0, 0, 0, 0);
    row_->setSpacing(gap);
}

void BreadCrumb::setSteps(const QStringList& steps) {
    while (QLayoutItem* item = row_->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            widget->hide();
            widget->deleteLater(); // one of them may just be telling that it was pressed
        }
        delete item;
    }
    for (int step = 0; step + 1 < steps.size(); ++step) {
        auto* back = new PushButton(PushButton::Kind::plain, shortened(steps[step]));
        back->setAccessibleName(steps[step]);
        back->setAccessibleDescription(QStringLiteral("Goes back to it"));
        connect(back, &QAbstractButton::clicked, this, [this, step] { Q_EMIT stepChosen(step); });
        row_->addWidget(back);
        auto* between = new TextLabel(QStringLiteral("›"), TextStyle::body, ThemeColor::secondaryText);
        AccessibleTraits::setDecoration(between);
        row_->addWidget(between);
    }
    auto* here = new ElidedLabel(steps.isEmpty() ? QString() : steps.last(), TextStyle::body);
    here->setWeight(QFont::Medium);
    row_->addWidget(here, 1);
}

} // namespace loadscope
