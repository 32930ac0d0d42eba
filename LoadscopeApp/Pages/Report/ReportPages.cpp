// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportPages.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/ScanHtml.h"

#include <QBuffer>
#include <QFont>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <QTextDocument>

namespace loadscope::ReportPages {
namespace {

constexpr int pointSize = 8;
constexpr int dotsPerInch = 300;

} // namespace

void print(const ScanReport& report, QPagedPaintDevice& device) {
    QTextDocument document;
    QFont font(QStringLiteral("Inter"));
    font.setPointSize(pointSize);
    document.setDefaultFont(font);
    document.setHtml(DisplayText::own(ScanHtml::report(report, ScanHtml::Medium::paper)));
    document.print(&device);
}

QByteArray pdf(const ScanReport& report) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(dotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({}); // the document has its own
    writer.setTitle(DisplayText::line(report.repositoryName));
    print(report, writer);
    return buffer.data();
}

} // namespace loadscope::ReportPages
