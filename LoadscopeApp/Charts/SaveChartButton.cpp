// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/SaveChartButton.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"

namespace loadscope {

SaveChartButton::SaveChartButton(const QString& name, const std::function<ChartPicture()>& picture,
                                 QWidget* parent)
    : MenuButton(PushButton::Kind::plain, QStringLiteral("Save Chart…"), parent) {
    const QString title = QStringLiteral("Save Chart");
    addChoice(QStringLiteral("PNG Image…"), [this, name, title, picture] {
        SaveFilePanel::open(this, {title, name, QStringLiteral("png"), QStringLiteral("PNG image")},
                            picture().png());
    });
    addChoice(QStringLiteral("SVG Drawing…"), [this, name, title, picture] {
        SaveFilePanel::open(this, {title, name, QStringLiteral("svg"), QStringLiteral("SVG drawing")},
                            picture().svg());
    });
}

} // namespace loadscope
