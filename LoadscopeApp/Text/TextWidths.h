// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>

/// How wide whole texts are, as the font sets them, remembered: layouts ask for the same few words hundreds
/// of times, and the toolkit shapes a text anew at each question. UI thread only.
namespace loadscope::TextWidths {

[[nodiscard]] double of(const QString& text, const QFont& font);

} // namespace loadscope::TextWidths
