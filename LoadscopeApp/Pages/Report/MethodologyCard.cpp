// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/MethodologyCard.h"

#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

MethodologyCard::MethodologyCard(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    content()->setSpacing(4);
    content()->addWidget(new SectionHeader(QStringLiteral("Methodology & disclosure"),
                                           DisplayText::line(ScanPresentation::measurementNote(report))));
    std::vector<std::string> lines{ScanPresentation::totalSourceLine(report),
                                   ScanPresentation::splitsEstimateNote};
    for (std::string& line : ConditionsPresentation::lines(report.conditions))
        lines.push_back(std::move(line));
    if (auto line = CodexPresentation::versionLine(report.codex)) lines.push_back(std::move(*line));
    for (const std::string& line : lines)
        content()->addWidget(TextLabel::note(DisplayText::line(line)));
    content()->addSpacing(2);
    for (const std::string& note : ConditionsPresentation::notes(report))
        content()->addWidget(new NoteLabel(DisplayText::line(note)));
}

} // namespace loadscope
