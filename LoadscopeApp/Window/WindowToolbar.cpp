// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/WindowToolbar.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QShortcut>
#include <QStyle>

namespace loadscope {
namespace {

constexpr int inset = 16;
constexpr int verticalInset = 10;
constexpr int buttonSpacing = 8;
constexpr int widestEntry = 460;

} // namespace

WindowToolbar::WindowToolbar(QWidget* parent)
    : QWidget(parent),
      choose_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Choose Repository…"))),
      recent_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Recent"))),
      scan_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Scan"))) {
    AccessibleTraits::setRole(this, QAccessible::ToolBar, QStringLiteral("Loadscope"));
    choose_->setSymbol(QStringLiteral("folder"));
    choose_->setShortcut(Qt::CTRL | Qt::Key_O);
    scan_->setSymbol(QStringLiteral("waveform.path.ecg"));
    scan_->setShortcut(Qt::CTRL | Qt::Key_R);
    PlainToolTip::set(*choose_, choose_->shortcut().toString(QKeySequence::NativeText));
    recent_->setMenu(new QMenu(recent_));
    recent_->setAccessibleName(QStringLiteral("Recent folders"));
    const QKeySequence recentKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    PlainToolTip::set(*recent_, recentKeys.toString(QKeySequence::NativeText));
    connect(new QShortcut(recentKeys, this), &QShortcut::activated, this, [this] {
        if (recent_->isEnabled() && recent_->isVisible()) recent_->showMenu();
    });
    connect(recent_->menu(), &QMenu::aboutToShow, this, &WindowToolbar::recentShown);
    const QStringList keys{scan_->shortcut().toString(QKeySequence::NativeText), QStringLiteral("F5")};
    PlainToolTip::set(*scan_, keys.join(QStringLiteral(", ")));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(inset, verticalInset, inset, verticalInset + 1);
    row->setSpacing(buttonSpacing);
    row->addStretch();
    row->addWidget(choose_);
    row->addWidget(recent_);
    row->addWidget(scan_);
    connect(choose_, &QPushButton::clicked, this, &WindowToolbar::chooseRequested);
    connect(scan_, &QPushButton::clicked, this, &WindowToolbar::scanRequested);
    AppTheme::bind(this, [this] {
        setMinimumHeight(Metrics::toolbarHeight);
        update();
    });
}

void WindowToolbar::refresh(const Input& input) {
    choose_->setAvailable(!input.isScanning);
    recent_->setAvailable(!input.isScanning && !recent_->menu()->isEmpty());
    scan_->setAvailable(input.canScan);
    scan_->setTitle(input.isScanning     ? QStringLiteral("Scanning…")
                    : input.hasSelection ? QStringLiteral("Scan Again")
                                         : QStringLiteral("Scan"));
}

void WindowToolbar::setRecent(const std::vector<RecentFolders::Folder>& folders) {
    QMenu* const menu = recent_->menu();
    const auto count = static_cast<qsizetype>(folders.size());
    while (menu->actions().size() > count)
        delete menu->actions().constLast();
    // An open menu stays as it is: its entries only change.
    while (menu->actions().size() < count) {
        QAction* const added = menu->addAction(QString());
        connect(added, &QAction::triggered, this,
                [this, added] { Q_EMIT recentRequested(added->data().toByteArray().toStdString()); });
    }
    const QFontMetrics metrics(menu->font());
    for (qsizetype i = 0; i < count; ++i) {
        const RecentFolders::Folder& folder = folders[static_cast<std::size_t>(i)];
        const QString text = metrics.elidedText(DisplayText::line(RecentFolderTexts::line(folder)),
                                                Qt::ElideMiddle, AppTheme::current().scaled(widestEntry));
        QAction* const entry = menu->actions().at(i);
        entry->setText(QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")));
        entry->setData(QByteArray::fromStdString(folder.selection.path));
        entry->setEnabled(!folder.isMissing);
    }
}

void WindowToolbar::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.fillRect(rect(), theme.color(ThemeColor::sidebar));
    painter.fillRect(0, height() - 1, width(), 1, theme.color(ThemeColor::border));
    // The window's title, where there is room for it between the edge and the buttons.
    const QString title = window()->windowTitle();
    const QFont font = theme.font(TextStyle::body, QFont::DemiBold);
    const int half = QFontMetrics(font).horizontalAdvance(title) / 2;
    const QRect button = QStyle::visualRect(layoutDirection(), rect(), choose_->geometry());
    if (width() / 2 + half + inset > button.left()) return;
    painter.setFont(font);
    painter.setPen(theme.color(ThemeColor::primaryText));
    ReadingText::draw(painter, rect().adjusted(0, 0, 0, -1), Qt::AlignCenter, title);
}

} // namespace loadscope
