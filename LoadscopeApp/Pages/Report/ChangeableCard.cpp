// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ChangeableCard.h"

#include "LoadscopeApp/Cards/DividerLine.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>

namespace loadscope {
namespace {

TextLabel* label(const QString& text, TextStyle style, ThemeColor color) {
    auto* line = new TextLabel(text, style, color);
    line->setWraps();
    return line;
}

/// What is copied, to be read first, beside the button.
QWidget* copyLine(QWidget* shown, const std::string& text) {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    auto* copy =
        new PushButton(PushButton::Kind::secondary, QString::fromLatin1(ChangeablePresentation::copyButton));
    copy->setSymbol(QStringLiteral("doc.on.doc"));
    copy->setAccessibleDescription(DisplayText::own(text));
    QObject::connect(copy, &QAbstractButton::clicked, copy,
                     [text] { QGuiApplication::clipboard()->setText(QString::fromStdString(text)); });
    row->addWidget(shown, 1, Qt::AlignVCenter);
    row->addWidget(copy, 0, Qt::AlignTop);
    return line;
}

} // namespace

bool ChangeableCard::isNeeded(const ScanReport& report) {
    return !report.largestChangeable.empty() || !report.missingServers.empty();
}

ChangeableCard::ChangeableCard(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    content()->addWidget(new SectionHeader(DisplayText::own(ChangeablePresentation::title),
                                           DisplayText::own(ChangeablePresentation::detail)));
    for (const ChangeableGroup& group : report.largestChangeable) {
        if (&group != &report.largestChangeable.front()) content()->addWidget(new DividerLine);
        addGroup(report, group);
    }
    if (const auto note = ChangeablePresentation::missingServersNote(report))
        content()->addWidget(new NoteLabel(DisplayText::line(*note)));
}

void ChangeableCard::addGroup(const ScanReport& report, const ChangeableGroup& group) {
    auto* block = new QVBoxLayout;
    block->setSpacing(4);
    const auto copied = ChangeablePresentation::copyable(group);
    const bool isItsName = copied && *copied == group.name; // the path of a file
    auto* name = label(DisplayText::line(group.name), TextStyle::body, ThemeColor::primaryText);
    name->setWeight(QFont::DemiBold);
    block->addWidget(label(DisplayText::own(ChangeablePresentation::kind(group)), TextStyle::caption,
                           ThemeColor::secondaryText));
    if (isItsName)
        block->addWidget(copyLine(name, *copied));
    else
        block->addWidget(name);
    block->addWidget(label(DisplayText::own(ChangeablePresentation::number(report, group)), TextStyle::body,
                           ThemeColor::primaryText));
    if (const std::string place = ChangeablePresentation::place(group); !place.empty())
        block->addWidget(label(DisplayText::line(place), TextStyle::caption, ThemeColor::secondaryText));
    if (copied && !isItsName) {
        auto* command = new SelectableText(DisplayText::own(*copied), TextStyle::caption);
        command->setAccessibleName(DisplayText::line(group.name));
        block->addWidget(copyLine(command, *copied));
    }
    content()->addLayout(block);
}

} // namespace loadscope
