// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CenteredPanel.h"

#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int eagerness = 1000;

} // namespace

CenteredPanel::CenteredPanel(int widest, QWidget* parent) : QWidget(parent), column_(new QVBoxLayout) {
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(Metrics::rowSpacing);
    auto* middle = new QWidget;
    middle->setLayout(column_);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch(1);
    row->addWidget(middle, eagerness);
    row->addStretch(1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Metrics::pageMargin, Metrics::pageMargin, Metrics::pageMargin,
                             Metrics::pageMargin);
    rows->setSpacing(0);
    rows->addStretch(1);
    rows->addLayout(row);
    rows->addStretch(1);
    AppTheme::bind(middle, [middle, widest] { middle->setMaximumWidth(AppTheme::current().scaled(widest)); });
}

} // namespace loadscope
