// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/SelectableText.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <memory>

namespace loadscope {
namespace {

constexpr int narrowest = 80;
constexpr int usualWidth = 440;
constexpr double lineHeightPercent = 117;

} // namespace

SelectableText::SelectableText(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : QTextEdit(parent), style_(style), color_(color) {
    setReadOnly(true);
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setTextAlignment(Qt::AlignLeading);
    setPlainText(text);
    applyLineSpacing();
    AppTheme::bind(this, [this] { applyTheme(); });
}

void SelectableText::setText(const QString& text) {
    if (text == toPlainText()) return;
    setPlainText(text);
    applyLineSpacing();
    measureAgain();
}

void SelectableText::setTextAlignment(Qt::Alignment alignment) {
    QTextOption option = document()->defaultTextOption();
    // The toolkit would set an English text to the left of a mirrored window.
    option.setAlignment(QStyle::visualAlignment(layoutDirection(), alignment) | Qt::AlignAbsolute);
    document()->setDefaultTextOption(option);
}

int SelectableText::longestLine() const {
    int widest = narrowest;
    for (const QString& line : toPlainText().split(QLatin1Char('\n')))
        widest = std::max(widest, fontMetrics().horizontalAdvance(line) + 2);
    return widest;
}

void SelectableText::applyLineSpacing() {
    QTextBlockFormat spacing;
    spacing.setLineHeight(lineHeightPercent, QTextBlockFormat::ProportionalHeight);
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(spacing);
}

void SelectableText::setHeightLimit(int height) {
    if (height == heightLimit_) return;
    heightLimit_ = height;
    updateGeometry();
    updateScrolling();
}

int SelectableText::heightForWidth(int width) const {
    return std::min(heightLimit_, heights_.at(width, [this](int wanted) { return measuredHeight(wanted); }));
}

int SelectableText::measuredHeight(int width) const {
    // A copy, because the text's own layout must keep the width that is shown.
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->setDefaultFont(document()->defaultFont());
    copy->setDefaultTextOption(document()->defaultTextOption());
    copy->setDocumentMargin(0);
    copy->setTextWidth(std::max(width, narrowest));
    return static_cast<int>(std::ceil(copy->size().height()));
}

QSize SelectableText::sizeHint() const {
    const int width = std::min(AppTheme::current().scaled(usualWidth), longestLine());
    return {width, heightForWidth(width)};
}

QSize SelectableText::minimumSizeHint() const { return {narrowest, fontMetrics().height()}; }

void SelectableText::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    updateScrolling();
}

void SelectableText::measureAgain() {
    heights_.forget();
    updateGeometry();
    updateScrolling();
}

void SelectableText::updateScrolling() {
    const bool scrolls = heightLimit_ != QWIDGETSIZE_MAX && document()->size().height() > heightLimit_;
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    // The bar takes its room from lines that are already broken.
    if (scrolls && document()->textWidth() != viewport()->width())
        document()->setTextWidth(viewport()->width());
}

void SelectableText::wheelEvent(QWheelEvent* event) {
    // Without a scroll bar of its own the wheel belongs to the page.
    if (verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
        event->ignore();
    else
        QTextEdit::wheelEvent(event);
}

void SelectableText::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
    }
    QTextEdit::focusOutEvent(event);
    viewport()->update();
}

void SelectableText::paintEvent(QPaintEvent* event) {
    QTextEdit::paintEvent(event);
    if (!FocusRing::isWanted(this)) return;
    QPainter painter(viewport());
    FocusRing::paint(painter, viewport()->rect(), Metrics::barRadius);
}

void SelectableText::applyTheme() {
    const AppTheme& theme = AppTheme::current();
    setFont(theme.font(style_));
    document()->setDefaultFont(theme.font(style_));
    QPalette palette = theme.palette();
    palette.setColor(QPalette::All, QPalette::Text, theme.color(color_));
    palette.setColor(QPalette::All, QPalette::Base, QColor(Qt::transparent));
    setPalette(palette);
    measureAgain();
}

} // namespace loadscope
