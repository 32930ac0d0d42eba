// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Controls/RowButtonList.h"

#include <string>

namespace loadscope {

class ComparePresentation;

/// Every scanned repository, one ranking per tool. A row opens its repository.
class LeaderboardCard : public ReportSurface, public RowButtonList {
    Q_OBJECT

public:
    explicit LeaderboardCard(const ComparePresentation& presentation);

Q_SIGNALS:
    void repositoryRequested(const std::string& path);
};

} // namespace loadscope
