// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

/// A sentence below a section that deserves attention: with a warning sign, in the warning colour.
class NoteLabel : public QWidget {
    Q_OBJECT

public:
    explicit NoteLabel(const QString& text, QWidget* parent = nullptr);
};

} // namespace loadscope
