// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CardPieces.h"

#include "LoadscopeApp/Cards/DividerLine.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace loadscope {

QVBoxLayout* CardPieces::header(const QString& title, const QString& detail, QWidget* control) {
    auto* heading = new SectionHeader(title, {});
    auto* row = new QHBoxLayout;
    row->setSpacing(Metrics::rowSpacing);
    row->addWidget(heading, 1);
    row->addWidget(control);
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    // The control is higher than the title, which must stand where it stands on the other cards.
    const int excess = control->sizeHint().height() - heading->sizeHint().height();
    column->setContentsMargins(0, -std::max(excess, 0) / 2, 0, 0);
    column->addLayout(row);
    column->addWidget(TextLabel::note(detail, TextStyle::subheadline));
    return column;
}

QHBoxLayout* CardPieces::inset(QWidget* content) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Metrics::cardInset, 0, Metrics::cardInset, 0);
    row->addWidget(content);
    return row;
}

QWidget* CardPieces::divider() { return new DividerLine; }

} // namespace loadscope
