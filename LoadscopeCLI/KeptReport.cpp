// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/KeptReport.h"

#include "LoadscopeCLI/InputFile.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ScanReportReader.h"

namespace loadscope::KeptReport {

std::variant<ScanMeasurement, Unusable> read(const std::string& path) {
    const auto text = InputFile::read(path);
    const std::string name = Text::visible(InputFile::nameOf(path));
    if (const auto* unreadable = std::get_if<InputFile::Unreadable>(&text))
        return Unusable{name + ' ' + unreadable->reason};
    auto report = ScanReportReader::read(std::get<std::string>(text));
    if (const auto* unreadable = std::get_if<ScanReportReader::Unreadable>(&report))
        return Unusable{name + ' ' + Text::visible(unreadable->reason)};
    return std::get<ScanMeasurement>(std::move(report));
}

} // namespace loadscope::KeptReport
