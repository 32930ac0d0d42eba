// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/SectionHeader.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QVBoxLayout>

namespace loadscope {

SectionHeader::SectionHeader(const QString& title, const QString& detail, QWidget* parent)
    : QWidget(parent), title_(new TextLabel(title, TextStyle::headline)) {
    AccessibleTraits::setRole(title_, QAccessible::Heading, title);
    title_->setWraps();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(title_);
    if (!detail.isEmpty()) column->addWidget(TextLabel::note(detail, TextStyle::subheadline));
}

void SectionHeader::silenceTitle() {
    title_->setAccessibleName({});
    AccessibleTraits::setDecoration(title_);
}

} // namespace loadscope
