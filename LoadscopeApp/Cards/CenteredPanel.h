// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace loadscope {

class CenteredColumn;

/// A column of limited width in the middle of the space that it is given, also from top to bottom.
class CenteredPanel : public QWidget {
    Q_OBJECT

public:
    explicit CenteredPanel(int widest, QWidget* parent = nullptr);

    [[nodiscard]] QVBoxLayout* column() const;

private:
    CenteredColumn* middle_;
};

} // namespace loadscope
