// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/MarkMenu.h"

#include <QAbstractButton>

namespace loadscope {

/// A row of a list in a card, from edge to edge, that opens something when it is clicked.
class RowButton : public QAbstractButton {
    Q_OBJECT

public:
    /// Takes over `content`. `name` is what assistive technologies call the row; of the content they are told
    /// nothing, so it must hold all that the content says.
    RowButton(QWidget* content, const QString& name, QWidget* parent = nullptr);

    /// What its menu is about.
    void setSubject(MarkSubject subject) { subject_ = std::move(subject); }
    [[nodiscard]] const MarkSubject& subject() const { return subject_; }

    /// Draws a line above the row, which parts it from the one before.
    void setDivided();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool divided_ = false;
    MarkSubject subject_;
};

} // namespace loadscope
