// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/BandGuide.h"

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace loadscope {

QWidget* BandGuide::makeSection(std::span<const char* const> sentences) {
    auto* body = new QWidget;
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    auto* rows = new QGridLayout;
    rows->setHorizontalSpacing(12);
    rows->setVerticalSpacing(8);
    rows->setColumnStretch(1, 1);
    int line = 0;
    for (const OpinionBand band : allOpinionBands) {
        rows->addWidget(
            new StatusPill(DisplayText::own(OpinionBands::title(band)), {}, ThemeColors::text(band)), line, 0,
            Qt::AlignLeading | Qt::AlignTop);
        rows->addWidget(TextLabel::note(DisplayText::own(OpinionBands::meaning(band)), TextStyle::body), line,
                        1, Qt::AlignVCenter);
        ++line;
    }
    column->addLayout(rows);
    for (const char* sentence : sentences)
        column->addWidget(TextLabel::note(DisplayText::own(sentence), TextStyle::body));
    return new CollapsibleSection(QStringLiteral("How to read this"),
                                  DisplayText::own(OpinionBands::opinionNote), body);
}

} // namespace loadscope
