// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Theme/ThemeColor.h"

#include "LoadscopeCore/Geometry/ChartPalette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace loadscope::ThemeColors {
namespace {

struct Adaptive {
    QRgb light;
    QRgb dark;
    [[nodiscard]] QColor in(Appearance appearance) const {
        return QColor::fromRgba(appearance == Appearance::dark ? dark : light);
    }
};

constexpr QRgb opaque(QRgb rgb) { return 0xff000000U | rgb; }
constexpr Adaptive adaptive(QRgb light, QRgb dark) { return {opaque(light), opaque(dark)}; }

Adaptive entry(ThemeColor name) {
    switch (name) {
    case ThemeColor::window:
        return adaptive(0xF4F5F7, 0x1A1B1E);
    case ThemeColor::sidebar:
        return adaptive(0xECEEF1, 0x202226);
    case ThemeColor::card:
        return adaptive(0xFFFFFF, 0x242629);
    case ThemeColor::border:
        return adaptive(0xE2E4E9, 0x35383E);
    case ThemeColor::divider:
        return adaptive(0xE8EAEE, 0x303338);
    case ThemeColor::primaryText:
        return adaptive(0x1B1D22, 0xF1F2F4);
    case ThemeColor::secondaryText:
        return adaptive(0x666B76, 0xA0A5AF);
    case ThemeColor::accent:
        return adaptive(0x0F766E, 0x2DD4BF);
    case ThemeColor::selected:
        return adaptive(0x0B5C56, 0x2DD4BF);
    case ThemeColor::onAccent:
        return adaptive(0xFFFFFF, 0x06302B);
    // The texts of the bands keep 4.5:1 on a pill of their own tint too, not only on the plain card.
    case ThemeColor::bandLean:
        return adaptive(0x187538, 0x4ADE80);
    case ThemeColor::bandHeavy:
        return adaptive(0xAA4E08, 0xFFB454);
    case ThemeColor::bandExcessive:
        return adaptive(0xC5221F, 0xFF7B72);
    case ThemeColor::leanFill:
        return adaptive(0x34B45A, 0x34C759);
    case ThemeColor::heavyFill:
        return adaptive(0xF0962B, 0xFF9F0A);
    case ThemeColor::excessiveFill:
        return adaptive(0xE4453C, 0xFF5A50);
    case ThemeColor::muted:
        return adaptive(0xEEF0F3, 0x2F3237);
    case ThemeColor::control:
        return adaptive(0xFFFFFF, 0x2D3035);
    case ThemeColor::controlHover:
        return adaptive(0xF7F8FA, 0x35393F);
    case ThemeColor::controlPressed:
        return adaptive(0xE9EBEF, 0x292C30);
    case ThemeColor::switchOff:
        return adaptive(0xA9AEB8, 0x555A63);
    case ThemeColor::knob:
        return adaptive(0xFFFFFF, 0xFFFFFF);
    case ThemeColor::dim:
        return {0x52101216U, 0x8C000000U};
    case ThemeColor::shadow:
        return adaptive(0x000000, 0x000000);
    }
    return adaptive(0, 0);
}

constexpr std::array<Adaptive, chartPaletteSize> chartPalette{
    adaptive(0x0F766E, 0x2DD4BF), adaptive(0x4C5BB5, 0x93A4F4), adaptive(0x8B4A7E, 0xE0A3D5),
    adaptive(0x8A7434, 0xDCC177), adaptive(0x6E6259, 0xB5AAA0)};

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

QColor color(ThemeColor name, Appearance appearance) { return entry(name).in(appearance); }

QColor chart(std::size_t index, Appearance appearance) {
    return chartPalette[index % chartPaletteSize].in(appearance);
}

ThemeColor text(OpinionBand band) {
    switch (band) {
    case OpinionBand::lean:
        return ThemeColor::bandLean;
    case OpinionBand::heavy:
        return ThemeColor::bandHeavy;
    case OpinionBand::excessive:
        break;
    }
    return ThemeColor::bandExcessive;
}

ThemeColor fill(OpinionBand band) {
    switch (band) {
    case OpinionBand::lean:
        return ThemeColor::leanFill;
    case OpinionBand::heavy:
        return ThemeColor::heavyFill;
    case OpinionBand::excessive:
        break;
    }
    return ThemeColor::excessiveFill;
}

double contrast(const QColor& first, const QColor& second) {
    const auto [low, high] = std::minmax({luminance(first), luminance(second)});
    return (high + 0.05) / (low + 0.05);
}

QColor blended(const QColor& over, double opacity, const QColor& base) {
    const auto mix = [opacity](float upper, float lower) {
        return static_cast<float>(upper * opacity + lower * (1 - opacity));
    };
    return QColor::fromRgbF(mix(over.redF(), base.redF()), mix(over.greenF(), base.greenF()),
                            mix(over.blueF(), base.blueF()));
}

} // namespace loadscope::ThemeColors
