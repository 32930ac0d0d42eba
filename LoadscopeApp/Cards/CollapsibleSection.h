// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"

#include <functional>

namespace loadscope {

class CollapsibleBody;
class DisclosureButton;

/// A card whose content is shown or hidden by its header; collapsed at first.
class CollapsibleSection : public ReportSurface {
    Q_OBJECT

public:
    /// Takes over `body`.
    CollapsibleSection(const QString& title, const QString& detail, QWidget* body, QWidget* parent = nullptr);

    [[nodiscard]] bool isExpanded() const;
    void setExpanded(bool expanded);

protected:
    /// Calls `fill` once, before the section is first expanded: for a body that costs much to build.
    void fillWhenExpanded(std::function<void()> fill) { fill_ = std::move(fill); }

private:
    DisclosureButton* header_;
    CollapsibleBody* body_;
    std::function<void()> fill_;
};

} // namespace loadscope
