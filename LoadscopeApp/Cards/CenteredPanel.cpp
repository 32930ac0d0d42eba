// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CenteredPanel.h"

#include "LoadscopeApp/Cards/CenteredColumn.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QVBoxLayout>

namespace loadscope {

CenteredPanel::CenteredPanel(int widest, QWidget* parent)
    : QWidget(parent), middle_(new CenteredColumn(Metrics::rowSpacing)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Metrics::pageMargin, Metrics::pageMargin, Metrics::pageMargin,
                             Metrics::pageMargin);
    rows->setSpacing(0);
    rows->addStretch(1);
    rows->addLayout(middle_);
    rows->addStretch(1);
    AppTheme::bind(this, [this, widest] { middle_->setWidest(AppTheme::current().scaled(widest)); });
}

QVBoxLayout* CenteredPanel::column() const { return middle_->column(); }

} // namespace loadscope
