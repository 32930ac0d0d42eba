// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/Sidebar.h"

#include "LoadscopeApp/Help/HelpButton.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeApp/Window/PageList.h"
#include "LoadscopeApp/Window/ScanSetupView.h"
#include "LoadscopeApp/Window/SidebarRepository.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int sectionSpacing = 24;
constexpr int headingSpacing = 8;
constexpr int topInset = 18;
constexpr int bottomInset = 10;
constexpr int footGap = 6;
constexpr int pageInset = 12; ///< the rows of the pages reach nearer to the edges than the texts

TextLabel* heading(const QString& title) {
    return TextLabel::heading(title, TextStyle::caption, ThemeColor::secondaryText);
}

QVBoxLayout* section(int inset) {
    auto* column = new QVBoxLayout;
    column->setContentsMargins(inset, 0, inset, 0);
    column->setSpacing(headingSpacing);
    return column;
}

} // namespace

Sidebar::Sidebar(ReadinessModel& readiness, ScanModel& model, QWidget* parent)
    : QScrollArea(parent),
      model_(model),
      repository_(new SidebarRepository),
      setup_(new ScanSetupView(readiness, model)),
      pages_(new PageList) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);

    auto* body = new QWidget;
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, topInset, 0, bottomInset);
    column->setSpacing(sectionSpacing);
    QVBoxLayout* repository = section(Metrics::sidebarInset);
    repository->addWidget(repository_);
    column->addLayout(repository);
    QVBoxLayout* setup = section(Metrics::sidebarInset);
    setup->addWidget(heading(QStringLiteral("Scan setup")));
    setup->addWidget(setup_);
    column->addLayout(setup);
    QVBoxLayout* pages = section(pageInset);
    auto* pagesHeading = heading(QStringLiteral("Pages"));
    // On both sides: margins are not mirrored.
    pagesHeading->setContentsMargins(Metrics::sidebarInset - pageInset, 0, Metrics::sidebarInset - pageInset,
                                     0);
    pages->addWidget(pagesHeading);
    pages->addWidget(pages_);
    // The foot stands where there is room below the pages; the smallest window has just as much.
    auto* help = new HelpButton;
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(Metrics::sidebarInset, footGap, Metrics::sidebarInset, 0);
    foot->addWidget(help);
    foot->addStretch();
    auto* lower = new QVBoxLayout;
    lower->setSpacing(0);
    lower->addLayout(pages);
    lower->addStretch();
    lower->addLayout(foot);
    column->addLayout(lower, 1);
    connect(help, &HelpButton::walkthroughRequested, this, &Sidebar::walkthroughRequested);
    setWidget(body);
    body->setAutoFillBackground(false);

    connect(pages_, &PageList::selected, this, &Sidebar::pageSelected);
    AppTheme::bind(this, [this, body] {
        // Large texts need more room than the usual least width.
        const int scrollBar = verticalScrollBar()->sizeHint().width();
        setMinimumWidth(std::max(Metrics::sidebarMinimumWidth, body->minimumSizeHint().width() + scrollBar));
        viewport()->update();
    });
    refresh();
}

void Sidebar::refresh() {
    repository_->refresh(model_.selection(), model_.state());
    setup_->updateScan();
}

void Sidebar::selectPage(AppPage page) { pages_->select(page); }

QSize Sidebar::sizeHint() const { return {Metrics::sidebarWidth, QScrollArea::sizeHint().height()}; }

void Sidebar::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), AppTheme::current().color(ThemeColor::sidebar));
    painter.end();
    QScrollArea::paintEvent(event);
}

} // namespace loadscope
