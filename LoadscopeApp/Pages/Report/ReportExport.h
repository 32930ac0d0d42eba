// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// A report for other programs: as pictures, in the appearance that the window has, and as data. Pictures do
/// not depend on the window's size or on what is expanded in it.
namespace loadscope::ReportExport {

enum class Subject { breakdown, files, report };
enum class Format { png, svg, pdf, html, markdown, csv, json };

/// False for a picture of something that the report does not have.
[[nodiscard]] bool isOffered(const ScanReport& report, Subject subject);

/// A file name for the dialog, made of the repository's name.
[[nodiscard]] QString fileName(const ScanReport& report, Subject subject, Format format);

/// Whether its pages take a while, and may be made on any thread. All others are made on the UI thread.
[[nodiscard]] bool isPaged(Format format);

/// The contents of the file; empty when there is no memory for the picture.
[[nodiscard]] QByteArray bytes(const std::shared_ptr<const ScanReport>& report, Subject subject,
                               Format format);

} // namespace loadscope::ReportExport
