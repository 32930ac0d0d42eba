// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <QColor>

#include <cstddef>

namespace loadscope {

enum class Appearance { light, dark };

/// The names of every colour that a widget may use. A widget keeps the name and asks `AppTheme` for the
/// colour when it paints, so that a change of appearance reaches it.
enum class ThemeColor {
    window,
    sidebar,
    card,
    border,
    divider,
    primaryText,
    secondaryText,
    accent,
    selected, ///< text of a selected row, on the accent's tint
    onAccent, ///< text on a surface filled with the accent
    bandLean,
    bandHeavy,
    bandExcessive,
    leanFill, ///< the fills of meters and gauges; brighter than the texts of the bands
    heavyFill,
    excessiveFill,
    muted,
    control,
    controlHover,
    controlPressed,
    switchOff,
    knob,
    dim, ///< laid over the window behind a sheet
    shadow,
};

namespace ThemeColors {

[[nodiscard]] QColor color(ThemeColor name, Appearance appearance);

/// Entry `index` modulo the palette's size.
[[nodiscard]] QColor chart(std::size_t index, Appearance appearance);

[[nodiscard]] ThemeColor text(OpinionBand band);
[[nodiscard]] ThemeColor fill(OpinionBand band);

/// WCAG contrast of two opaque colours, 1 to 21.
[[nodiscard]] double contrast(const QColor& first, const QColor& second);

/// `over`, with `opacity` of its own, laid on the opaque colour `base`.
[[nodiscard]] QColor blended(const QColor& over, double opacity, const QColor& base);

} // namespace ThemeColors
} // namespace loadscope
