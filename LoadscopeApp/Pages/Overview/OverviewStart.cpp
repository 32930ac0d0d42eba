// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Overview/OverviewStart.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Cards/ScanEmptyState.h"
#include "LoadscopeApp/Cards/ShadowCanvas.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QVBoxLayout>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int rowInset = 8;
constexpr int headingGap = 12;

RowButton* rowFor(const RecentFolders::Folder& folder) {
    const QString name = DisplayText::line(folder.selection.displayName);
    const QString detail = DisplayText::line(RecentFolderTexts::detail(folder));
    auto* content = new QWidget;
    auto* lines = new QVBoxLayout(content);
    lines->setContentsMargins(0, rowInset, 0, rowInset);
    lines->setSpacing(2);
    const ThemeColor tint = folder.isMissing ? ThemeColor::secondaryText : ThemeColor::primaryText;
    auto* path = new ElidedLabel(detail, TextStyle::caption, ThemeColor::secondaryText);
    path->setElideMode(Qt::ElideMiddle);
    lines->addWidget(new ElidedLabel(name, TextStyle::body, tint));
    lines->addWidget(path);
    auto* row = new RowButton(content, DisplayText::line(RecentFolderTexts::spoken(folder)));
    row->setSubject({DisplayText::line(folder.selection.displayName), {}, folder.selection.path, true});
    row->setEnabled(!folder.isMissing);
    return row;
}

} // namespace

OverviewStart::OverviewStart(QWidget* parent)
    : QScrollArea(parent),
      choose_(new PushButton(PushButton::Kind::primary, QStringLiteral("Choose Repository…"))),
      heading_(new TextLabel(QStringLiteral("Recent folders"), TextStyle::headline)),
      list_(new ReportSurface),
      rows_(new QVBoxLayout) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::NoFocus);

    auto* panel =
        new ScanEmptyState(QStringLiteral("Start a context scan"),
                           QStringLiteral("Choose a local repository, then scan it in Claude Code. Turn on "
                                          "Include Codex to add a Codex scan."));
    setFocusProxy(panel);
    AccessibleTraits::setRole(heading_, QAccessible::Heading);
    AccessibleTraits::setRole(list_, QAccessible::List, QStringLiteral("Recent folders"));
    list_->content()->setContentsMargins(0, 0, 0, 0);
    list_->content()->addLayout(rows_);
    rows_->setSpacing(0);
    panel->column()->addWidget(choose_, 0, Qt::AlignHCenter);
    panel->column()->addSpacing(headingGap);
    panel->column()->addWidget(heading_);
    panel->column()->addWidget(list_);
    auto* canvas = new ShadowCanvas;
    auto* whole = new QVBoxLayout(canvas);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(panel);
    setWidget(canvas);
    canvas->setAutoFillBackground(false);
    connect(choose_, &QPushButton::clicked, this, &OverviewStart::chooseRequested);
    rebuild();
}

void OverviewStart::refresh(const std::vector<RecentFolders::Folder>& folders) {
    std::vector<RecentFolders::Folder> shown(
        folders.begin(),
        folders.begin() + static_cast<std::ptrdiff_t>(std::min(folders.size(), mostFolders)));
    if (shown == folders_) return;
    folders_ = std::move(shown);
    rebuild();
}

void OverviewStart::rebuild() {
    while (QLayoutItem* item = rows_->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    for (const RecentFolders::Folder& folder : folders_) {
        RowButton* row = rowFor(folder);
        if (rows_->count() > 0) row->setDivided();
        rows_->addWidget(row);
        connect(row, &RowButton::clicked, this,
                [this, path = folder.selection.path] { Q_EMIT folderRequested(path); });
    }
    heading_->setVisible(!folders_.empty());
    list_->setVisible(!folders_.empty());
}

void OverviewStart::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    Q_EMIT shown();
}

} // namespace loadscope
