// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <memory>

namespace loadscope {

class PushButton;

/// What is recorded, and the ways to take it along or to delete it.
class RecordedDataCard : public ReportSurface {
    Q_OBJECT

public:
    explicit RecordedDataCard(const std::shared_ptr<const TrendsPresentation>& presentation);

    /// Says that everything is being deleted, and offers it no second time.
    void setClearing(bool clearing);

Q_SIGNALS:
    /// The user wants to be asked whether to delete everything.
    void clearWanted();

private:
    PushButton* clear_;
};

} // namespace loadscope
