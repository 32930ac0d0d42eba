// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"

namespace loadscope {

class TrendsPresentation;

/// Where the repository landed: its latest scan, that scan's band, and how far it drifted.
class SummaryCard : public ReportSurface {
    Q_OBJECT

public:
    explicit SummaryCard(const TrendsPresentation& presentation);
};

} // namespace loadscope
