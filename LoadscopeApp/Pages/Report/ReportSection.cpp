// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportSection.h"

#include "LoadscopeApp/Cards/DividerLine.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Report/ExportButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>

namespace loadscope {
namespace {

QLayout* buttons(const std::shared_ptr<const ScanReport>& report) {
    auto* message = TextLabel::note({}, TextStyle::body);
    auto* save = new ExportButton(report);
    QObject::connect(save, &ExportButton::finished, message, &QLabel::setText);
    auto* copy = new PushButton(PushButton::Kind::secondary, QStringLiteral("Copy Summary"));
    copy->setSymbol(QStringLiteral("doc.on.doc"));
    QObject::connect(copy, &QAbstractButton::clicked, copy, [report, message] {
        QGuiApplication::clipboard()->setText(DisplayText::own(ScanPresentation::copyableSummary(*report)));
        message->setText(QStringLiteral("The summary is on the clipboard."));
    });
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(message, 1);
    row->addWidget(save);
    row->addWidget(copy);
    return row;
}

QWidget* summary(const ScanReport& report) {
    QStringList lines;
    for (const std::string& line : ScanPresentation::summaryLines(report))
        lines.append(DisplayText::line(line));
    auto* text = new SelectableText(lines.join(QLatin1Char('\n')));
    text->setAccessibleName(QStringLiteral("Summary"));
    return text;
}

QLayout* details(const ScanReport& report) {
    const std::pair<const char*, std::string> pairs[] = {
        {"Repository path", report.repositoryPath},
        {"Claude executable", report.resolvedCLIPath},
        {"Session ID", report.sessionID},
        {"Duration", ScanPresentation::durationText(report)},
    };
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    for (const auto& [label, value] : pairs) {
        const int row = grid->rowCount();
        const QString name = DisplayText::own(label);
        grid->addWidget(new TextLabel(name, TextStyle::body, ThemeColor::secondaryText), row, 0,
                        Qt::AlignTop);
        auto* text = new SelectableText(DisplayText::line(value));
        text->setAccessibleName(name);
        grid->addWidget(text, row, 1);
    }
    return grid;
}

} // namespace

ReportSection::ReportSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent)
    : CollapsibleSection(
          QStringLiteral("Full report"),
          QStringLiteral("A factual, copyable summary of this one Claude Code startup-context scan."),
          body(report), parent) {}

QWidget* ReportSection::body(const std::shared_ptr<const ScanReport>& report) {
    auto* body = new QWidget;
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addLayout(buttons(report));
    column->addWidget(summary(*report));
    column->addWidget(new DividerLine);
    column->addWidget(TextLabel::heading(QStringLiteral("Session details")));
    column->addLayout(details(*report));
    return body;
}

} // namespace loadscope
