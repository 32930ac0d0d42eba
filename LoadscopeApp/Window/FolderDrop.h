// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <string>

class QDragEnterEvent;
class QDropEvent;
class QWidget;

namespace loadscope {

/// Lets a window take a folder that is dropped on it. A frame shows where the folder will go.
class FolderDrop : public QObject {
    Q_OBJECT

public:
    /// `isWelcome` tells whether a folder may be dropped now. The window owns this.
    FolderDrop(QWidget* window, std::function<bool()> isWelcome,
               std::function<void(const std::string& folder)> dropped);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enter(QDragEnterEvent& event);
    void drop(QDropEvent& event);
    void showFrame(bool visible);

    QWidget* window_;
    std::function<bool()> isWelcome_;
    std::function<void(const std::string& folder)> dropped_;
    QPointer<QWidget> frame_;
};

} // namespace loadscope
