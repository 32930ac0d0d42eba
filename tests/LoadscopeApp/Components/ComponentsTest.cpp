// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Cards/TrendPill.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Motion/BobbingIcon.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QAccessible>
#include <QEnterEvent>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace loadscope {
namespace {

TEST(TrendPill, NamesTheChangeInWordsAndColour) {
    using enum TrendDirection;
    struct Case {
        TrendPillText pill;
        QString text;
        QString symbol;
        ThemeColor tint;
    };
    const std::vector<Case> cases{
        {TrendPillText::of({}, {}), "First scan", "", ThemeColor::secondaryText},
        {TrendPillText::of(up, {}), "First scan", "", ThemeColor::secondaryText},
        {TrendPillText::of(flat, 0), "±0", "equal", ThemeColor::secondaryText},
        {TrendPillText::of(up, 4'120), "+4,120", "arrow.up.right", ThemeColor::bandHeavy},
        {TrendPillText::of(down, -7'000), "-7,000", "arrow.down.right", ThemeColor::bandLean},
    };
    for (const Case& testCase : cases) {
        const TrendPill pill(testCase.pill);
        EXPECT_EQ(pill.look().text, testCase.text);
        EXPECT_EQ(pill.look().symbol, testCase.symbol);
        EXPECT_EQ(pill.look().tint, testCase.tint);
    }
}

TEST(CollapsibleSection, ShowsItsContentAndSaysSo) {
    auto* body = new TextLabel("inside");
    CollapsibleSection section("Full report", "A detail.", body);
    section.resize(400, 300);
    section.show();
    auto* header = section.findChild<DisclosureButton*>();
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(header);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Full report");
    EXPECT_EQ(spoken->text(QAccessible::Value), "Collapsed");
    EXPECT_EQ(spoken->text(QAccessible::Description), "Shows or hides this section");
    EXPECT_FALSE(body->isVisible());
    EXPECT_GE(header->height(), 44);

    QTest::keyClick(header, Qt::Key_Return);
    EXPECT_EQ(spoken->text(QAccessible::Value), "Expanded");
    EXPECT_TRUE(spoken->state().expanded);
    EXPECT_TRUE(body->isVisible());

    QTest::mouseClick(header, Qt::LeftButton);
    EXPECT_FALSE(section.isExpanded());
    EXPECT_FALSE(body->isVisible());
}

TEST(ReportSurface, RisesAtOnceUnderThePointerWhenMotionIsUnwelcome) {
    ReportSurface surface;
    QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
    QCoreApplication::sendEvent(&surface, &enter);
    EXPECT_EQ(surface.elevation(), 1);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&surface, &leave);
    EXPECT_EQ(surface.elevation(), 0);
}

TEST(ValueAnimation, MovesThroughTheValuesBetweenAndRestsAtTheEnd) {
    AppTheme::current().force(Appearance::light, false);
    std::vector<double> values;
    ValueAnimation animation(nullptr, 0, [&values](double value) { values.push_back(value); });
    QSignalSpy finished(&animation, &QVariantAnimation::finished);
    animation.animateTo(1, 60);
    ASSERT_TRUE(finished.wait(5'000));
    AppTheme::current().force(Appearance::light, true);
    EXPECT_EQ(animation.value(), 1);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_EQ(animation.state(), QAbstractAnimation::Stopped);
}

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

TEST(PushButton, IsPressedByReturnBeforeAShortcutAndKeepsItsOwnShortcut) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* button = new PushButton(PushButton::Kind::secondary, "Choose");
    column->addWidget(button);
    int shortcuts = 0;
    QObject::connect(new QShortcut(Qt::Key_Return, &window), &QShortcut::activated,
                     [&shortcuts] { ++shortcuts; });
    window.show();
    window.activateWindow();
    button->setFocus();
    QSignalSpy clicked(button, &QPushButton::clicked);
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(shortcuts, 0);
    button->setShortcut(Qt::CTRL | Qt::Key_O);
    button->setTitle("Changed");
    EXPECT_EQ(button->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
}

TEST(PushButton, ShowsThatItHasTheKeyboardOnEveryFill) {
    using enum PushButton::Kind;
    QWidget window;
    auto* row = new QVBoxLayout(&window);
    for (const auto kind : {primary, secondary, destructive, plain})
        row->addWidget(new PushButton(kind, "Retry"));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const auto appearance : {Appearance::light, Appearance::dark}) {
        AppTheme::current().force(appearance, true);
        for (auto* button : window.findChildren<PushButton*>()) {
            window.setFocus();
            const QImage before = button->grab().toImage();
            button->setFocus();
            const QImage after = button->grab().toImage();
            int changed = 0;
            for (int x = 0; x < after.width(); ++x) {
                for (int y = 0; y < after.height(); ++y)
                    changed += std::abs(qGray(before.pixel(x, y)) - qGray(after.pixel(x, y))) > 40 ? 1 : 0;
            }
            EXPECT_GT(changed, after.width() + after.height()) << row->indexOf(button);
        }
    }
    AppTheme::current().force(Appearance::light, true);
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

/// The widget as it looks in a window of that direction, on a ground of one colour.
QImage shown(const std::function<QWidget*()>& make, Qt::LayoutDirection window) {
    QGuiApplication::setLayoutDirection(window);
    const std::unique_ptr<QWidget> widget(make());
    widget->resize(300, 40);
    const QImage image = widget->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    return image;
}

/// The sum of the differences of each two pixels, in pixels of full contrast.
double difference(const QImage& left, const QImage& right) {
    double sum = 0;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            sum += std::abs(qGray(left.pixel(x, y)) - qGray(right.pixel(x, y))) / 255.0;
    return sum;
}

TEST(Mirroring, TurnsWhatPointsSomewhereAndMovesTextsToTheirEdge) {
    using Side = DisclosureButton::ChevronSide;
    const auto pointer = [] { return new BobbingIcon("arrow.up.right", 24, ThemeColor::accent); };
    for (const Side side : {Side::leading, Side::trailing}) {
        const auto disclosure = [side] { return new DisclosureButton("More", new QWidget, side); };
        for (const std::function<QWidget*()>& make : {std::function<QWidget*()>(disclosure), {pointer}}) {
            const QImage mirrored = shown(make, Qt::LeftToRight).mirrored(true, false);
            EXPECT_LT(difference(shown(make, Qt::RightToLeft), mirrored), 5);
        }
    }
    const auto text = [] { return new SelectableText("/home/dev"); };
    const QRect half(0, 0, 150, 40);
    EXPECT_GT(difference(shown(text, Qt::LeftToRight).copy(half), shown(text, Qt::RightToLeft).copy(half)),
              5);
}

} // namespace
} // namespace loadscope
