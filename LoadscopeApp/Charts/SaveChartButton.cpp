// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/SaveChartButton.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"

#include <QMenu>

namespace loadscope {

SaveChartButton::SaveChartButton(const QString& name, const std::function<ChartPicture()>& picture,
                                 QWidget* parent)
    : PushButton(Kind::plain, QStringLiteral("Save Chart…"), parent) {
    const QString title = QStringLiteral("Save Chart");
    auto* choices = new QMenu(this);
    choices->addAction(QStringLiteral("PNG Image…"), this, [this, name, title, picture] {
        SaveFilePanel::open(this, {title, name, QStringLiteral("png"), QStringLiteral("PNG image")},
                            picture().png());
    });
    choices->addAction(QStringLiteral("SVG Drawing…"), this, [this, name, title, picture] {
        SaveFilePanel::open(this, {title, name, QStringLiteral("svg"), QStringLiteral("SVG drawing")},
                            picture().svg());
    });
    setMenu(choices);
}

} // namespace loadscope
