// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Motion/BobbingIcon.h"
#include "LoadscopeApp/Text/SelectableText.h"

#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

namespace loadscope {
namespace {

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
