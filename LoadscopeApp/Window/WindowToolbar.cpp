// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/WindowToolbar.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

namespace loadscope {
namespace {

constexpr int inset = 16;
constexpr int verticalInset = 10;
constexpr int buttonSpacing = 8;

} // namespace

WindowToolbar::WindowToolbar(QWidget* parent)
    : QWidget(parent),
      choose_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Choose Repository…"))),
      scan_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Scan"))) {
    AccessibleTraits::setRole(this, QAccessible::ToolBar, QStringLiteral("Loadscope"));
    choose_->setSymbol(QStringLiteral("folder"));
    choose_->setShortcut(Qt::CTRL | Qt::Key_O);
    scan_->setSymbol(QStringLiteral("waveform.path.ecg"));
    scan_->setShortcut(Qt::CTRL | Qt::Key_R);
    PlainToolTip::set(*choose_, choose_->shortcut().toString(QKeySequence::NativeText));
    const QStringList keys{scan_->shortcut().toString(QKeySequence::NativeText), QStringLiteral("F5")};
    PlainToolTip::set(*scan_, keys.join(QStringLiteral(", ")));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(inset, verticalInset, inset, verticalInset + 1);
    row->setSpacing(buttonSpacing);
    row->addStretch();
    row->addWidget(choose_);
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
    scan_->setAvailable(input.canScan);
    scan_->setTitle(input.isScanning     ? QStringLiteral("Scanning…")
                    : input.hasSelection ? QStringLiteral("Scan Again")
                                         : QStringLiteral("Scan"));
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
