// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/ChartPicture.h"
#include "LoadscopeApp/Controls/PushButton.h"

#include <functional>

namespace loadscope {

/// Saves a chart as a picture: "PNG Image…" or "SVG Drawing…".
class SaveChartButton : public PushButton {
    Q_OBJECT

public:
    /// `picture` gives the chart as it is when a kind is chosen; `name` is the suggested file's name.
    SaveChartButton(const QString& name, const std::function<ChartPicture()>& picture,
                    QWidget* parent = nullptr);
};

} // namespace loadscope
