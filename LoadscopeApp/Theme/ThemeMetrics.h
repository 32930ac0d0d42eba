// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// Sizes in points (one point is one pixel at a scale of 1), opacities and durations that several widgets
/// share.
namespace loadscope::Metrics {

inline constexpr int windowWidth = 1180;
inline constexpr int windowHeight = 780;
inline constexpr int minimumWindowWidth = 960;
inline constexpr int minimumWindowHeight = 640;
inline constexpr int windowFrameHeight = 40; ///< what the desktop puts around a window, at most
inline constexpr int toolbarHeight = 52;
inline constexpr int sidebarMinimumWidth = 220;
inline constexpr int sidebarWidth = 250;
inline constexpr int sidebarInset = 20;

inline constexpr int pageMargin = 24;
inline constexpr int pageMaximumWidth = 1120;
inline constexpr int blockSpacing = 20;

inline constexpr int cardInset = 16;
inline constexpr int cardRadius = 14;
inline constexpr double cardWashOpacity = 0.05;
inline constexpr double cardBorderOpacity = 0.6;
inline constexpr int cardShadowRadius = 16;
inline constexpr double cardShadowOpacity = 0.16;

inline constexpr int controlRadius = 7;
inline constexpr int controlHeight = 30;
inline constexpr int barRadius = 4;
inline constexpr int tileRadius = 6;
inline constexpr int sheetRadius = 16;

inline constexpr double tintOpacity = 0.12;
inline constexpr int pillHorizontalInset = 8;
inline constexpr int pillVerticalInset = 4;
inline constexpr int stateIconSymbol = 28;
inline constexpr int stateIconArea = 64;
inline constexpr int rankWidth = 20;
inline constexpr int rowSpacing = 16;
inline constexpr int headerMinimumHeight = 44;

inline constexpr int hoverMilliseconds = 180;
inline constexpr int pageAppearMilliseconds = 320;
inline constexpr int pageAppearShift = 8;
inline constexpr int collapseMilliseconds = 220;
inline constexpr int switchMilliseconds = 160;

} // namespace loadscope::Metrics
