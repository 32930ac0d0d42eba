// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CenteredColumn.h"

#include <QVBoxLayout>
#include <QWidget>

namespace loadscope {
namespace {

constexpr int eagerness = 1000;

} // namespace

CenteredColumn::CenteredColumn(int spacing) : middle_(new QWidget), column_(new QVBoxLayout(middle_)) {
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(spacing);
    setContentsMargins(0, 0, 0, 0);
    setSpacing(0);
    addStretch(1);
    addWidget(middle_, eagerness);
    addStretch(1);
}

void CenteredColumn::setWidest(int width) { middle_->setMaximumWidth(width); }

} // namespace loadscope
