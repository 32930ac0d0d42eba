// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The section "How to read this", which the Trends and Compare pages share.
namespace loadscope::BandGuide {

/// A new collapsed section that explains the three bands.
[[nodiscard]] QWidget* makeSection();

} // namespace loadscope::BandGuide
