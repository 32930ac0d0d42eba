// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/PageList.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int rowHeight = 32;
constexpr int symbolSize = 17;
constexpr int inset = 10;
constexpr int textGap = 9;
constexpr double hoverOpacity = 0.05;
constexpr double selectedOpacity = 0.14;

} // namespace

PageButton::PageButton(AppPage page, QWidget* parent)
    : QRadioButton(AppPages::title(page), parent), page_(page) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize PageButton::sizeHint() const {
    const AppTheme& theme = AppTheme::current();
    const int text = QFontMetrics(theme.font(TextStyle::body, QFont::Medium)).horizontalAdvance(this->text());
    return {text + theme.scaled(symbolSize) + textGap + 2 * inset, theme.scaled(rowHeight)};
}

bool PageButton::hitButton(const QPoint& position) const { return rect().contains(position); }

void PageButton::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (isChecked())
        painter.setBrush(theme.color(ThemeColor::accent, selectedOpacity));
    else if (underMouse())
        painter.setBrush(theme.color(ThemeColor::primaryText, hoverOpacity));
    painter.drawRoundedRect(rect(), Metrics::controlRadius, Metrics::controlRadius);

    const QColor ink = theme.color(isChecked() ? ThemeColor::selected : ThemeColor::primaryText);
    const int side = theme.scaled(symbolSize);
    const QRect icon(inset, (height() - side) / 2, side, side);
    Icon::paint(painter, QStyle::visualRect(layoutDirection(), rect(), icon), AppPages::symbol(page_), ink);
    painter.setFont(theme.font(TextStyle::body, QFont::Medium));
    painter.setPen(ink);
    const QRect text(icon.right() + 1 + textGap, 0, width() - icon.right() - textGap - inset, height());
    ReadingText::draw(painter, QStyle::visualRect(layoutDirection(), rect(), text),
                      Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, this->text());
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

PageList::PageList(QWidget* parent) : QWidget(parent) {
    AccessibleTraits::setRole(this, QAccessible::Grouping, QStringLiteral("Pages"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    for (std::size_t index = 0; index < allAppPages.size(); ++index) {
        const AppPage page = allAppPages[index];
        buttons_[index] = new PageButton(page);
        column->addWidget(buttons_[index]);
        connect(buttons_[index], &QRadioButton::toggled, this, [this, page](bool checked) {
            if (checked) Q_EMIT selected(page);
        });
    }
}

void PageList::select(AppPage page) {
    PageButton* button = buttons_[static_cast<std::size_t>(page)];
    const QWidget* focus = window()->focusWidget();
    button->setChecked(true);
    // The keyboard is on the selected page's button or on none.
    if (focus != nullptr && isAncestorOf(focus)) button->setFocus(Qt::OtherFocusReason);
}

} // namespace loadscope
