// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CenteredPanel.h"

namespace loadscope {

class TextLabel;

/// An invitation where there is nothing to show yet: an icon, a title and what to do.
class ScanEmptyState : public CenteredPanel {
    Q_OBJECT

public:
    ScanEmptyState(const QString& title, const QString& detail, QWidget* parent = nullptr);

    void setTexts(const QString& title, const QString& detail);

private:
    TextLabel* title_;
    TextLabel* detail_;
};

} // namespace loadscope
