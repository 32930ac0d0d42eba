// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <QByteArray>

class QPagedPaintDevice;

/// A report on paper: text that can be selected and searched, on as many pages as it takes, whatever the
/// window shows. May be used on any thread.
namespace loadscope::ReportPages {

/// Draws the pages.
void print(const ScanReport& report, QPagedPaintDevice& device);

/// A PDF document of A4 pages.
[[nodiscard]] QByteArray pdf(const ScanReport& report);

} // namespace loadscope::ReportPages
