// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <QWidget>

namespace loadscope {

/// One line on what changed since an earlier scan, which opens to the comparison.
class SinceLine : public QWidget {
    Q_OBJECT

public:
    explicit SinceLine(const ScanComparison& comparison, QWidget* parent = nullptr);
};

} // namespace loadscope
