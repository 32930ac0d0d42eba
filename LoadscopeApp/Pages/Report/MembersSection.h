// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <memory>

namespace loadscope {

/// What the categories are made of, as tiles within tiles, and all of it to be copied.
class MembersSection : public CollapsibleSection {
    Q_OBJECT

public:
    explicit MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent = nullptr);

private:
    MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* body, QWidget* parent);
};

} // namespace loadscope
