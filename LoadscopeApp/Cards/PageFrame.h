// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace loadscope {

class CenteredColumn;
class TextLabel;

/// A page that scrolls: one column of blocks, of limited width, in the middle of the window. It comes into
/// view with a short movement when it is first shown.
class PageFrame : public QScrollArea {
    Q_OBJECT

public:
    explicit PageFrame(QWidget* parent = nullptr);

    /// The column; 20 points between its blocks. Keep a stretch at its end.
    [[nodiscard]] QVBoxLayout* column() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    CenteredColumn* middle_;
    bool hasAppeared_ = false;
};

/// The title of a page over one sentence, which can be selected.
class PageHeader : public QWidget {
    Q_OBJECT

public:
    PageHeader(const QString& title, const QString& subtitle, QWidget* parent = nullptr);
    void setSubtitle(const QString& subtitle);

private:
    TextLabel* subtitle_;
};

} // namespace loadscope
