// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <QWidget>

namespace loadscope {

/// What changed between two scans: why they are not alike, if they are not, and a line for each category that
/// changed, with a sentence where none did.
class ComparisonTable : public QWidget {
    Q_OBJECT

public:
    explicit ComparisonTable(const ScanComparison& comparison, QWidget* parent = nullptr);
};

} // namespace loadscope
