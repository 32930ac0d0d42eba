// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/FolderDrop.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>
#include <QWidget>

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
class DropFrame : public QWidget {
public:
    explicit DropFrame(QWidget* window) : QWidget(window) {
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

FolderDrop::FolderDrop(QWidget* window, std::function<bool()> isWelcome,
                       std::function<void(const std::string& folder)> dropped)
    : QObject(window), window_(window), isWelcome_(std::move(isWelcome)), dropped_(std::move(dropped)) {
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
        enter(*static_cast<QDragEnterEvent*>(event));
        return true;
    case QEvent::DragLeave:
        showFrame(false);
        return true;
    case QEvent::Drop:
        drop(*static_cast<QDropEvent*>(event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void FolderDrop::enter(QDragEnterEvent& event) {
    const bool isWelcome = isWelcome_() && draggedFolder(*event.mimeData());
    event.setAccepted(isWelcome);
    if (!isWelcome) return;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    showFrame(true);
}

void FolderDrop::drop(QDropEvent& event) {
    showFrame(false);
    if (const auto folder = draggedFolder(*event.mimeData())) {
        event.acceptProposedAction();
        dropped_(*folder);
    }
}

void FolderDrop::showFrame(bool visible) {
    delete frame_;
    if (visible) frame_ = new DropFrame(window_);
}

} // namespace loadscope
