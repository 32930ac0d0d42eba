// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QAccessible>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace loadscope {
namespace {

TEST(Texts, FromOutsideAreNeverTakenForMarkup) {
    const QString hostile = "<b>x</b><img src=x>";
    EXPECT_EQ(TextLabel(hostile).textFormat(), Qt::PlainText);
    EXPECT_EQ(SelectableText(hostile).text(), hostile);
    EXPECT_FALSE(PlainToolTip::escaped(hostile).contains("<b>"));
    EXPECT_FALSE(PlainToolTip::escaped(hostile).contains("<img"));
    EXPECT_FALSE(DisplayText::line("a\nb\x1b[31m").contains(QChar(0x1b)));
    EXPECT_FALSE(DisplayText::line("a\u202eb").contains(QChar(0x202e)));
}

TEST(ElidedLabel, GivesWayButKeepsTheWholeTextForReaders) {
    const QString name(400, 'n');
    ElidedLabel label(name);
    EXPECT_LT(label.minimumSizeHint().width(), 120);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), name);
}

TEST(SelectableText, BreaksLongWordsAndScrollsBeyondItsLimit) {
    QWidget page;
    auto* column = new QVBoxLayout(&page);
    auto* text = new SelectableText(QString(5'000, 'w'));
    column->addWidget(text);
    page.resize(400, 300);
    text->setHeightLimit(120);
    page.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(text->heightForWidth(380), 120);
    EXPECT_GT(text->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(text->horizontalScrollBar()->maximum(), 0);
    text->selectAll();
    EXPECT_EQ(text->textCursor().selectedText().size(), 5'000);
}

/// The picture of the text in a strip twice as wide as it needs.
QImage painted(const QString& text, Qt::LayoutDirection window, Qt::Alignment edge) {
    QImage strip(400, 40, QImage::Format_RGB32);
    strip.fill(Qt::white);
    QPainter painter(&strip);
    painter.setLayoutDirection(window);
    ReadingText::draw(painter, strip.rect(), static_cast<int>(edge) | Qt::TextSingleLine, text);
    return strip;
}

TEST(ReadingText, StandsAtTheWindowsEdgeAndReadsInItsOwnDirection) {
    for (const QString& text : {QStringLiteral("English ends with a stop."), QStringLiteral("שלום, עולם.")}) {
        SCOPED_TRACE(text.toStdString());
        const QImage left = painted(text, Qt::LeftToRight, Qt::AlignLeft | Qt::AlignAbsolute);
        const QImage right = painted(text, Qt::LeftToRight, Qt::AlignRight | Qt::AlignAbsolute);
        EXPECT_NE(left, right);
        EXPECT_EQ(painted(text, Qt::LeftToRight, Qt::AlignLeading), left);
        EXPECT_EQ(painted(text, Qt::LeftToRight, Qt::AlignTrailing), right);
        EXPECT_EQ(painted(text, Qt::RightToLeft, Qt::AlignLeading), right);
        EXPECT_EQ(painted(text, Qt::RightToLeft, Qt::AlignTrailing), left);
    }
}

} // namespace
} // namespace loadscope
