// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/Pill.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/TextWidths.h"
#include "LoadscopeApp/Text/WholeSelection.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int symbolSize = 13;
constexpr int symbolGap = 5;
constexpr int leastText = 40;

QStringList broken(const QString& text, const QFont& font, int width) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

/// As few lines as the width allows, and those as narrow as can be: no word stands alone in the last one.
QStringList balanced(const QString& text, const QFont& font, int width) {
    QStringList best = broken(text, font, width);
    int least = width / 2;
    for (int most = width; least < most;) {
        const int middle = (least + most) / 2;
        QStringList lines = broken(text, font, middle);
        if (lines.size() == best.size()) {
            best = std::move(lines);
            most = middle;
        } else {
            least = middle + 1;
        }
    }
    return best;
}

} // namespace

Pill::Pill(Look look, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    setLook(std::move(look));
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void Pill::setLook(Look look) {
    look_ = std::move(look);
    setAccessibleName(look_.text);
    updateGeometry();
    update();
}

QFont Pill::textFont() const { return AppTheme::current().font(look_.style, look_.weight); }

int Pill::symbolWidth() const {
    return look_.symbol.isEmpty() ? 0 : AppTheme::current().scaled(symbolSize) + symbolGap;
}

void Pill::setWraps(const QString& longest) {
    longest_ = longest;
    QSizePolicy policy(QSizePolicy::Maximum, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Pill::setSelectable() {
    selection_ = new WholeSelection(this, [this] { return look_.text; });
}

int Pill::textRoom(int width) const {
    return std::max(width - symbolWidth() - 2 * Metrics::pillHorizontalInset, 1);
}

QStringList Pill::lines(const QString& text, int width) const {
    const int room = textRoom(width);
    const QFont font = textFont();
    if (TextWidths::of(text, font) <= room) return {text};
    if (!longest_) return {QFontMetrics(font).elidedText(text, Qt::ElideRight, room)};
    return balanced(text, font, room);
}

qsizetype Pill::lineCount(const QString& text, int width) const {
    const int room = textRoom(width);
    const QFont font = textFont();
    return TextWidths::of(text, font) <= room ? 1 : broken(text, font, room).size();
}

int Pill::heightForWidth(int width) const {
    if (!longest_) return -1;
    const qsizetype count = std::max(lineCount(look_.text, width), lineCount(*longest_, width));
    return static_cast<int>(count) * QFontMetrics(textFont()).height() + 2 * Metrics::pillVerticalInset;
}

bool Pill::isCut() const { return !longest_ && sizeHint().width() > width() + 1; }

QSize Pill::sizeHint() const {
    const QFont font = textFont();
    const int text = static_cast<int>(std::ceil(TextWidths::of(look_.text, font)));
    return {text + symbolWidth() + 2 * Metrics::pillHorizontalInset + 1,
            QFontMetrics(font).height() + 2 * Metrics::pillVerticalInset};
}

QSize Pill::minimumSizeHint() const {
    const QSize whole = sizeHint();
    return {std::min(whole.width(), symbolWidth() + 2 * Metrics::pillHorizontalInset + leastText),
            whole.height()};
}

void Pill::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const QFont font = textFont();
    const QFontMetrics metrics(font);
    const QStringList shown = lines(look_.text, width());
    int widest = 0;
    for (const QString& line : shown)
        widest = std::max(widest, metrics.horizontalAdvance(line));
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QRect capsule(0, 0, std::min(widest + symbolWidth() + 2 * Metrics::pillHorizontalInset + 1, width()),
                  static_cast<int>(shown.size()) * metrics.height() + 2 * Metrics::pillVerticalInset);
    if (mirrored) capsule.moveRight(rect().right());

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(look_.tint ? QPen(theme.tintBorder(*look_.tint)) : QPen(Qt::NoPen));
    painter.setBrush(look_.tint ? theme.tint(*look_.tint) : theme.color(ThemeColor::muted));
    const double radius = metrics.height() / 2.0 + Metrics::pillVerticalInset;
    painter.drawRoundedRect(QRectF(capsule).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    if (selection_ != nullptr && selection_->isSelected()) WholeSelection::paint(painter, capsule, radius);

    const QColor ink = theme.color(look_.tint.value_or(ThemeColor::secondaryText));
    QRect area = capsule.adjusted(Metrics::pillHorizontalInset, Metrics::pillVerticalInset,
                                  -Metrics::pillHorizontalInset, -Metrics::pillVerticalInset);
    if (symbolWidth() > 0) {
        const double side = theme.scaled(symbolSize);
        const QPointF corner(mirrored ? area.right() + 1 - side : area.left(), (capsule.height() - side) / 2);
        Icon::paint(painter, QRectF(corner, QSizeF(side, side)), look_.symbol, ink);
        area.adjust(mirrored ? 0 : symbolWidth(), 0, mirrored ? -symbolWidth() : 0, 0);
    }
    painter.setFont(font);
    painter.setPen(ink);
    for (const QString& line : shown) {
        area.setHeight(metrics.height());
        ReadingText::draw(painter, area,
                          Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine | Qt::TextDontClip, line);
        area.translate(0, metrics.height());
    }
}

bool Pill::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QWidget::event(event);
    PlainToolTip::show(static_cast<QHelpEvent*>(event)->globalPos(), isCut() ? look_.text : QString(), this);
    return true;
}

} // namespace loadscope
