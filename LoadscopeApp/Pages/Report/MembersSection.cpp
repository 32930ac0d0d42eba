// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/MembersSection.h"

#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>

namespace loadscope {
namespace {

QLayout* copyLine(const std::shared_ptr<const ScanReport>& report) {
    auto* message = TextLabel::note({}, TextStyle::body);
    auto* copy =
        new PushButton(PushButton::Kind::secondary, DisplayText::own(DetailsPresentation::copyButton));
    copy->setSymbol(QStringLiteral("doc.on.doc"));
    QObject::connect(copy, &QAbstractButton::clicked, copy, [report, message] {
        QGuiApplication::clipboard()->setText(
            QString::fromStdString(DetailsPresentation::copyableDetails(*report)));
        message->setText(DisplayText::own(DetailsPresentation::copied));
    });
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(message, 1);
    row->addWidget(copy);
    return row;
}

void fill(QWidget* body, const std::shared_ptr<const ScanReport>& report) {
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new MemberTreemapView(report));
    column->addWidget(TextLabel::note(DisplayText::own(MemberTreemap::caption)));
    column->addLayout(copyLine(report));
}

} // namespace

MembersSection::MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent)
    : MembersSection(report, new QWidget, parent) {}

MembersSection::MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* body,
                               QWidget* parent)
    : CollapsibleSection(DisplayText::own(MemberTreemap::title), DisplayText::own(MemberTreemap::detailLine),
                         body, parent) {
    fillWhenExpanded([report, body] { fill(body, report); });
}

} // namespace loadscope
