// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <optional>

namespace loadscope {

/// The line below the ring: which sector is selected and what share it has.
class SelectionLine : public QWidget {
    Q_OBJECT

public:
    struct Selected {
        std::size_t color = 0;
        QString name;
        QString share;
    };

    explicit SelectionLine(QWidget* parent = nullptr);

    void select(std::optional<Selected> selected);
    /// What the line says now.
    [[nodiscard]] QString text() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<Selected> selected_;
};

} // namespace loadscope
