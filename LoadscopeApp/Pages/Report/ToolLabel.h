// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/TextLabel.h"

namespace loadscope {

/// The name of a tool above its numbers, in small capitals; read out as it is written.
class ToolLabel : public TextLabel {
    Q_OBJECT

public:
    explicit ToolLabel(const QString& tool, QWidget* parent = nullptr)
        : TextLabel(tool.toUpper(), TextStyle::caption, ThemeColor::secondaryText, parent) {
        setWeight(QFont::DemiBold);
        setAccessibleName(tool);
    }
};

} // namespace loadscope
