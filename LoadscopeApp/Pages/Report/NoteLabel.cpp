// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/NoteLabel.h"

#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QHBoxLayout>

namespace loadscope {

NoteLabel::NoteLabel(const QString& text, QWidget* parent) : QWidget(parent) {
    constexpr int symbol = 14;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(
        new IconView(QStringLiteral("exclamationmark.triangle.fill"), symbol, ThemeColor::bandHeavy), 0,
        Qt::AlignTop);
    auto* label = new TextLabel(text, TextStyle::caption, ThemeColor::bandHeavy);
    label->setWraps();
    row->addWidget(label, 1);
}

} // namespace loadscope
