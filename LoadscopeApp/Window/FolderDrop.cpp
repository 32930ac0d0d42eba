// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// How a folder that is dropped on the window becomes the selection.
#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

#include <filesystem>
#include <system_error>

namespace loadscope {
namespace {

constexpr double frameWidth = 3;
constexpr double washOpacity = 0.06;

/// The path of the one local folder that is dragged, if it is just that.
std::optional<std::string> draggedFolder(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.constFirst().isLocalFile()) return {};
    // The bytes of the path, which need not be UTF-8: as text, two folders could have one name.
    const QString encoded = urls.constFirst().path(QUrl::FullyEncoded);
    std::string path = QByteArray::fromPercentEncoding(encoded.toLatin1()).toStdString();
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) return {};
    return path;
}

/// A frame around the window that shows where the folder will go.
class DropTarget : public QWidget {
public:
    explicit DropTarget(QWidget* window) : QWidget(window) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        AccessibleTraits::setDecoration(this);
        setGeometry(window->rect());
        raise();
        show();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const AppTheme& theme = AppTheme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(theme.color(ThemeColor::accent), frameWidth));
        painter.setBrush(theme.color(ThemeColor::accent, washOpacity));
        const double inset = frameWidth / 2 + 2;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), Metrics::cardRadius,
                                Metrics::cardRadius);
    }
};

} // namespace

void ContentView::dragEnterEvent(QDragEnterEvent* event) {
    if (model_.state().isScanning() || !content_->isEnabled() || !draggedFolder(*event->mimeData())) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setDropTarget(true);
}

void ContentView::dragLeaveEvent(QDragLeaveEvent*) { setDropTarget(false); }

void ContentView::dropEvent(QDropEvent* event) {
    setDropTarget(false);
    if (const auto folder = draggedFolder(*event->mimeData())) {
        event->acceptProposedAction();
        selectFolder(*folder);
    }
}

void ContentView::setDropTarget(bool visible) {
    delete dropTarget_;
    if (visible) dropTarget_ = new DropTarget(this);
}

} // namespace loadscope
