// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include <QWidget>

namespace loadscope {

/// One tool and whether it is ready; read out as one element.
class ReadinessRow : public QWidget {
    Q_OBJECT

public:
    explicit ReadinessRow(const QString& tool, QWidget* parent = nullptr);

    void setReadiness(ToolReadiness readiness);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isStacked(int width) const;

    QString tool_;
    QString value_;
};

} // namespace loadscope
