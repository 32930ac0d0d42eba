// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QSplitter>

namespace loadscope {

/// The two columns of the window with a hairline between them, which can be dragged a little beside the line
/// too.
class WindowSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit WindowSplitter(QWidget* parent = nullptr);

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace loadscope
