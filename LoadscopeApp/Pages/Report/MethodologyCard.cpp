// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/MethodologyCard.h"

#include "LoadscopeApp/Components/SectionHeader.h"
#include "LoadscopeApp/Components/TextLabel.h"
#include "LoadscopeApp/DisplayText.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

MethodologyCard::MethodologyCard(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    content()->setSpacing(4);
    content()->addWidget(new SectionHeader(QStringLiteral("Methodology & disclosure"),
                                           DisplayText::own(ScanPresentation::measurementNote)));
    for (const std::string& line :
         {ScanPresentation::totalSourceLine(report), std::string(ScanPresentation::splitsEstimateNote)}) {
        auto* label = new TextLabel(DisplayText::own(line), TextStyle::caption, ThemeColor::secondaryText);
        label->setWraps();
        content()->addWidget(label);
    }
}

} // namespace loadscope
