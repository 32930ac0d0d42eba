// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/SectionHeader.h"

#include "LoadscopeApp/Components/AccessibleTraits.h"
#include "LoadscopeApp/Components/TextLabel.h"

#include <QVBoxLayout>

namespace loadscope {

SectionHeader::SectionHeader(const QString& title, const QString& detail, QWidget* parent)
    : QWidget(parent),
      title_(new TextLabel(title, TextStyle::headline)),
      detail_(new TextLabel(detail, TextStyle::subheadline, ThemeColor::secondaryText)) {
    AccessibleTraits::setRole(title_, QAccessible::Heading);
    title_->setWraps();
    detail_->setWraps();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(title_);
    column->addWidget(detail_);
    detail_->setVisible(
        !detail.isEmpty()); // not before it has a parent: it would open as a window of its own
    setTitle(title);
}

void SectionHeader::setTitle(const QString& title) {
    title_->setText(title);
    title_->setAccessibleName(title);
}

void SectionHeader::setDetail(const QString& detail) {
    detail_->setText(detail);
    detail_->setVisible(!detail.isEmpty());
}

} // namespace loadscope
