// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// What the system that this program was built for calls things, for the sentences that users read.
namespace loadscope::SystemWords {

#ifdef __APPLE__
inline constexpr bool hasPrivacySettings = true; ///< which may keep a program from a folder
inline constexpr const char* thisComputer = "this Mac";
inline constexpr const char* terminal = "Terminal";
#else
inline constexpr bool hasPrivacySettings = false;
inline constexpr const char* thisComputer = "this computer";
inline constexpr const char* terminal = "a terminal";
#endif

} // namespace loadscope::SystemWords
