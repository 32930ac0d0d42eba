// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHBoxLayout>

class QVBoxLayout;

namespace loadscope {

/// A column of limited width in the middle of the width that it is given.
class CenteredColumn : public QHBoxLayout {
    Q_OBJECT

public:
    explicit CenteredColumn(int spacing);

    [[nodiscard]] QVBoxLayout* column() const { return column_; }
    void setWidest(int width);

private:
    QWidget* middle_;
    QVBoxLayout* column_;
};

} // namespace loadscope
