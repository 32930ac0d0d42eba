// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/DisplayText.h"

#include "LoadscopeCore/Platform/Text.h"

namespace loadscope::DisplayText {

QString line(std::string_view bytes) { return QString::fromStdString(Text::visible(bytes)); }

QString paragraphs(std::string_view bytes) { return QString::fromStdString(Text::visibleLines(bytes)); }

} // namespace loadscope::DisplayText
