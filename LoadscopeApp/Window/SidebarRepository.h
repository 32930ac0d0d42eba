// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QWidget>

#include <optional>

namespace loadscope {

class ElidedLabel;
class SelectableText;
class StatusPill;
class TextLabel;

/// The chosen repository, the state of its scan, and what a scan costs.
class SidebarRepository : public QWidget {
    Q_OBJECT

public:
    explicit SidebarRepository(QWidget* parent = nullptr);

    void refresh(const std::optional<RepoSelection>& selection, const ScanState& state);

private:
    ElidedLabel* name_;
    TextLabel* noName_; ///< stands in place of the name
    SelectableText* path_;
    StatusPill* status_;
};

} // namespace loadscope
