// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <span>

class QWidget;

/// The section "How to read this", which the Trends and Compare pages share.
namespace loadscope::BandGuide {

/// A new collapsed section that explains the three bands and then says `sentences`.
[[nodiscard]] QWidget* makeSection(std::span<const char* const> sentences);

} // namespace loadscope::BandGuide
