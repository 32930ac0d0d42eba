// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/RescanCard.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Scan/ScanBatchTexts.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int lineSpacing = 4;
constexpr int pieceSpacing = 12;

} // namespace

/// One folder: its name, what becomes of it, and a button while that can still be stopped.
class RescanCard::Row : public QWidget {
public:
    Row()
        : title_(new ElidedLabel({})),
          state_(new ElidedLabel({}, TextStyle::body, ThemeColor::secondaryText)),
          cancel_(new PushButton(PushButton::Kind::plain, QStringLiteral("Cancel"))) {
        title_->setElideMode(Qt::ElideMiddle);
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(pieceSpacing);
        row->addWidget(title_, 2);
        row->addWidget(state_, 3);
        row->addWidget(cancel_);
        QSizePolicy keepsRoom = cancel_->sizePolicy();
        keepsRoom.setRetainSizeWhenHidden(true); // else the states would jump aside
        cancel_->setSizePolicy(keepsRoom);
    }

    void refresh(const ScanBatch::Item& item) {
        title_->setText(DisplayText::line(item.selection.displayName));
        state_->setText(DisplayText::own(ScanBatchTexts::state(item)));
        AccessibleTraits::setRole(this, QAccessible::ListItem,
                                  DisplayText::line(ScanBatchTexts::spoken(item)));
        cancel_->setAccessibleName(DisplayText::line(ScanBatchTexts::cancelName(item)));
        cancel_->setVisible(!item.hasEnded());
        cancel_->setAvailable(item.state != ScanBatch::State::stopping);
    }

    [[nodiscard]] PushButton* cancelButton() const { return cancel_; }

private:
    ElidedLabel* title_;
    ElidedLabel* state_;
    PushButton* cancel_;
};

RescanCard::RescanCard(QWidget* parent)
    : ReportSurface(parent),
      detail_(TextLabel::note({})),
      button_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Rescan All"))),
      list_(new QWidget),
      rows_(new QVBoxLayout(list_)) {
    auto* title = new TextLabel(QStringLiteral("Rescan all"), TextStyle::headline);
    AccessibleTraits::setRole(title, QAccessible::Heading);
    AccessibleTraits::setRole(list_, QAccessible::List, QStringLiteral("Rescan all"));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(lineSpacing);
    texts->addWidget(title);
    texts->addWidget(detail_);
    auto* head = new QHBoxLayout;
    head->setSpacing(pieceSpacing);
    head->addLayout(texts, 1);
    head->addWidget(button_, 0, Qt::AlignVCenter);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(lineSpacing);
    content()->addLayout(head);
    content()->addWidget(list_);
    list_->hide();
    connect(button_, &QPushButton::clicked, this,
            [this] { isRunning_ ? Q_EMIT cancelAllRequested() : Q_EMIT rescanRequested(); });
}

RescanCard::~RescanCard() = default;

void RescanCard::refresh(const Input& input) {
    isRunning_ = input.isRunning;
    setVisible(input.repositories > 0 || !input.items.empty());
    const bool isBlocked = !isRunning_ && !input.blocker.isEmpty();
    detail_->setText(isBlocked
                         ? input.blocker
                         : DisplayText::own(input.items.empty()
                                                ? ScanBatchTexts::invitation(input.repositories, input.jobs)
                                                : ScanBatchTexts::progress(input.items)));
    button_->setTitle(isRunning_ ? QStringLiteral("Cancel All") : QStringLiteral("Rescan All"));
    button_->setAvailable(!isBlocked);
    while (lines_.size() > input.items.size()) {
        delete lines_.back();
        lines_.pop_back();
    }
    for (std::size_t i = 0; i < input.items.size(); ++i) {
        if (i == lines_.size()) {
            auto* row = new Row;
            connect(row->cancelButton(), &QPushButton::clicked, this,
                    [this, i] { Q_EMIT cancelRequested(i); });
            rows_->addWidget(row);
            lines_.push_back(row);
        }
        lines_[i]->refresh(input.items[i]);
    }
    list_->setVisible(!lines_.empty());
}

} // namespace loadscope
