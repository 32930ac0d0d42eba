// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class ValueAnimation;

/// Lies over a widget while pictures of it move, so that nothing is laid out anew meanwhile. It takes neither
/// the pointer nor the keyboard and deletes itself when it is done.
class TransitionCover : public QWidget {
    Q_OBJECT

protected:
    explicit TransitionCover(QWidget* covered);

    /// From 0 to 1.
    [[nodiscard]] double progress() const;
    [[nodiscard]] ValueAnimation* animation() const { return progress_; }
    /// Called with each new progress.
    virtual void step() { update(); }

private:
    ValueAnimation* progress_;
};

} // namespace loadscope
