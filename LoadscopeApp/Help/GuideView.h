// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class QTextBrowser;
class QUrl;

namespace loadscope {

class PushButton;

/// The guide, which the program carries with it: a button for each page and the page's text. Needs no
/// network and starts nothing: a link that leads out of it is not followed.
class GuideView : public QWidget {
    Q_OBJECT

public:
    explicit GuideView(QWidget* parent = nullptr);

    [[nodiscard]] PushButton* closeButton() const { return close_; }
    /// The page that is shown, by the name of its file without the extension.
    [[nodiscard]] const QString& page() const { return page_; }
    /// False when there is no such page; the one before stays then.
    bool showPage(const QString& name);

private:
    void follow(const QUrl& link);

    QTextBrowser* text_;
    PushButton* close_;
    QString page_;
};

} // namespace loadscope
