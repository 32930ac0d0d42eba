// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Help/GuideView.h"

#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/SegmentButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Presentation/HelpTexts.h"

#include <QButtonGroup>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>

static void registerGuide() { Q_INIT_RESOURCE(LoadscopeGuide); } // has to stand outside of namespaces

namespace loadscope {
namespace {

constexpr int inset = 20;
constexpr int spacing = 12;
constexpr int usualWidth = 640;
constexpr int usualHeight = 480;
constexpr int paragraphGap = 8;
constexpr int headingGap = 10;
constexpr int cellPadding = 5;

/// Without the pictures, which the program does not carry.
QString withoutPictures(QString markdown) {
    static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\([^)]*\\)\n*"));
    return markdown.remove(picture);
}

/// Room between the paragraphs, quiet tables, and links in a colour that can be read in the dark, too.
void dress(QTextDocument& document) {
    const AppTheme& theme = AppTheme::current();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        if (cursor.currentTable() == nullptr) {
            format.setTopMargin(format.headingLevel() > 0 ? headingGap : 0);
            format.setBottomMargin(paragraphGap);
            cursor.setBlockFormat(format);
        }
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().isAnchor()) continue;
            QTextCharFormat link;
            link.setForeground(theme.color(ThemeColor::accent));
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(link);
        }
    }
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setBorderBrush(theme.color(ThemeColor::divider));
        format.setCellPadding(cellPadding);
        format.setBottomMargin(paragraphGap);
        table->setFormat(format);
    }
}

} // namespace

GuideView::GuideView(QWidget* parent)
    : QWidget(parent),
      text_(new QTextBrowser),
      close_(new PushButton(PushButton::Kind::primary, QStringLiteral("Close"))) {
    registerGuide();
    auto* pages = new QHBoxLayout;
    pages->setSpacing(spacing / 2);
    auto* group = new QButtonGroup(this);
    for (const HelpTexts::GuidePage& page : HelpTexts::guidePages()) {
        const QString name = DisplayText::own(page.name);
        auto* choice = new SegmentButton(DisplayText::own(page.title));
        choice->setObjectName(name);
        group->addButton(choice);
        pages->addWidget(choice);
        connect(choice, &QAbstractButton::clicked, this, [this, name] { showPage(name); });
    }
    text_->setOpenLinks(false);
    text_->setFrameShape(QFrame::NoFrame);
    text_->setAccessibleName(QStringLiteral("Guide"));
    connect(text_, &QTextBrowser::anchorClicked, this, &GuideView::follow);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(inset, inset, inset, inset);
    column->setSpacing(spacing);
    column->addLayout(pages);
    column->addWidget(text_, 1);
    column->addLayout(buttons);
    AppTheme::bind(this, [this] {
        const AppTheme& theme = AppTheme::current();
        QPalette palette = theme.palette();
        palette.setColor(QPalette::Base, Qt::transparent);
        text_->setPalette(palette);
        text_->document()->setDefaultFont(theme.font(TextStyle::body));
        if (!page_.isEmpty()) showPage(page_); // in the colours of now
        setFixedSize(usualWidth + (theme.scaled(usualWidth) - usualWidth) / 4, usualHeight);
    });
    showPage(DisplayText::own(HelpTexts::guidePages().front().name));
}

bool GuideView::showPage(const QString& name) {
    QFile file(QStringLiteral(":/loadscope/guide/") + name + QStringLiteral(".md"));
    if (!file.open(QIODevice::ReadOnly)) return false;
    page_ = name;
    text_->setMarkdown(withoutPictures(QString::fromUtf8(file.readAll())));
    dress(*text_->document());
    text_->verticalScrollBar()->setValue(0);
    if (auto* choice = findChild<SegmentButton*>(name)) choice->setChecked(true);
    return true;
}

void GuideView::follow(const QUrl& link) {
    if (link.isRelative() && link.path().endsWith(QStringLiteral(".md")))
        showPage(QFileInfo(link.path()).completeBaseName());
}

} // namespace loadscope
