// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Controls/RowButtonList.h"

#include <string>

namespace loadscope {

class TrendsPresentation;

/// The newest recorded scans of every repository. A row opens its repository.
class PreviousRunsCard : public ReportSurface, public RowButtonList {
    Q_OBJECT

public:
    explicit PreviousRunsCard(const TrendsPresentation& presentation);

Q_SIGNALS:
    void repositoryRequested(const std::string& path);
};

} // namespace loadscope
