// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/ScanEmptyState.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/StateIcon.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int widestText = 440;

} // namespace

ScanEmptyState::ScanEmptyState(const QString& title, const QString& detail, QWidget* parent)
    : CenteredPanel(widestText, parent),
      title_(new TextLabel(title, TextStyle::headline)),
      detail_(new TextLabel(detail, TextStyle::body, ThemeColor::secondaryText)) {
    AccessibleTraits::setRole(title_, QAccessible::Heading);
    for (TextLabel* label : {title_, detail_}) {
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setWraps();
    }
    column()->addWidget(new StateIcon(QStringLiteral("magnifyingglass"), ThemeColor::secondaryText), 0,
                        Qt::AlignHCenter);
    column()->addWidget(title_);
    column()->addWidget(detail_);
    setFocusProxy(title_); // it has the keyboard after a scan was cancelled, and the title tells where one is
    setTexts(title, detail);
}

void ScanEmptyState::setTexts(const QString& title, const QString& detail) {
    title_->setText(title);
    title_->setAccessibleName(title);
    detail_->setText(detail);
}

} // namespace loadscope
