// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Components/CollapsibleSection.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <vector>

namespace loadscope {

class TreemapView;

/// The instruction files of a session: which could not be read, how large the others are, and a list of them.
class InstructionFilesSection : public CollapsibleSection {
    Q_OBJECT

public:
    explicit InstructionFilesSection(const ScanReport& report, QWidget* parent = nullptr);

    /// The treemap of these files, which must be largest first.
    [[nodiscard]] static TreemapView* treemap(const std::vector<InstructionFileEstimate>& files,
                                              std::int64_t total);

private:
    static QWidget* body(const ScanReport& report);
};

} // namespace loadscope
