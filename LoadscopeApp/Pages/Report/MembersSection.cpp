// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/MembersSection.h"

#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Controls/BreadCrumb.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScopedValueRollback>

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

BreadCrumb* wayTo(MemberTreemapView* treemap) {
    auto* way = new BreadCrumb(DisplayText::own(MemberTreemap::wayName));
    const auto show = [way, treemap] {
        QStringList names;
        for (const std::string& step : treemap->treemap().steps(treemap->zoomed()))
            names.append(DisplayText::line(step));
        way->setSteps(names);
    };
    show();
    QObject::connect(treemap, &MemberTreemapView::zoomChanged, way, show);
    QObject::connect(way, &BreadCrumb::stepChosen, treemap, [treemap](int step) {
        treemap->setFocus(Qt::OtherFocusReason); // the step that was pressed is about to go
        const auto depth = [treemap] { return treemap->treemap().steps(treemap->zoomed()).size(); };
        while (depth() > static_cast<std::size_t>(step) + 1)
            treemap->zoomOut();
    });
    return way;
}

} // namespace

MembersSection::MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent)
    : MembersSection(report, new QWidget, parent) {}

MembersSection::MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* body,
                               QWidget* parent)
    : CollapsibleSection(DisplayText::own(MemberTreemap::title), DisplayText::own(MemberTreemap::detailLine),
                         body, parent) {
    fillWhenExpanded([this, report, body] { fill(report, body); });
}

void MembersSection::fill(const std::shared_ptr<const ScanReport>& report, QWidget* body) {
    treemap_ = new MemberTreemapView(report);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(wayTo(treemap_));
    column->addWidget(treemap_);
    column->addWidget(TextLabel::note(DisplayText::own(MemberTreemap::caption)));
    column->addWidget(TextLabel::note(DisplayText::own(MemberTreemap::zoomCaption)));
    column->addLayout(copyLine(report));
    link();
}

void MembersSection::connectRows(ReportTable* table) {
    table_ = table;
    link();
}

void MembersSection::link() {
    if (treemap_ == nullptr || table_ == nullptr) return;
    using Item = MarkedWidget::Item;
    const auto isLed = std::make_shared<bool>(false); // one follows the other, which must not follow in turn
    connect(treemap_, &MemberTreemapView::activeChanged, table_,
            [treemap = treemap_, table = table_.get(), isLed](Item node) {
                if (*isLed) return;
                const QScopedValueRollback leads(*isLed, true);
                Item row = node ? Item(treemap->treemap().lineOf(*node)) : Item();
                while (row && !table->places().positionOf(*row))
                    row = table->outline().parentOf(*row); // it stands below a closed row
                table->setActive(row);
            });
    connect(table_, &ReportTable::activeChanged, treemap_, [treemap = treemap_, isLed](Item row) {
        if (*isLed) return;
        const QScopedValueRollback leads(*isLed, true);
        treemap->follow(row ? treemap->treemap().nodeOfLine(*row) : Item());
    });
}

} // namespace loadscope
