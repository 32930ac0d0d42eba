// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"

#include <vector>

namespace loadscope {

class TreemapView;

/// The instruction files of a session: which could not be read, how large the others are, and a list of them.
/// There may be thousands, so the list is made when the section is first expanded.
class InstructionFilesSection : public CollapsibleSection {
    Q_OBJECT

public:
    explicit InstructionFilesSection(const ScanReport& report, QWidget* parent = nullptr);

    /// The treemap of these files, which must be largest first.
    [[nodiscard]] static TreemapView* treemap(const std::vector<FilesPresentation::File>& files);

private:
    InstructionFilesSection(const ScanReport& report, QWidget* body, QWidget* parent);
};

} // namespace loadscope
