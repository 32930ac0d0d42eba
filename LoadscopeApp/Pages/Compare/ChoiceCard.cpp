// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/ChoiceCard.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int gap = 8;
constexpr int narrowestBox = 200;
constexpr int mostCharacters = 32; ///< of a name beside its box; the tip has the whole one

QString beside(const QString& name) {
    QString shown = name;
    if (name.size() > mostCharacters)
        shown = name.left(mostCharacters / 2) + QChar(0x2026) + name.right(mostCharacters / 2 - 1);
    return shown.replace(QLatin1Char('&'), QStringLiteral("&&")); // a name has no key of its own
}

} // namespace

ChoiceCard::ChoiceCard(QWidget* parent) : ChoiceCard(new QWidget, parent) {}

ChoiceCard::ChoiceCard(QWidget* body, QWidget* parent)
    : CollapsibleSection(DisplayText::own(ComparePresentation::choiceTitle),
                         DisplayText::own(ComparePresentation::choiceDetail), body, parent),
      body_(body) {
    fillWhenExpanded([this] { fill(); });
}

void ChoiceCard::fill() {
    auto* column = new QVBoxLayout(body_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    summaryLabel_ = TextLabel::note({}, TextStyle::body);
    auto* head = new QHBoxLayout;
    head->setSpacing(gap);
    head->addWidget(summaryLabel_, 1);
    for (const bool isChecked : {true, false}) {
        auto* button =
            new PushButton(PushButton::Kind::secondary,
                           isChecked ? QStringLiteral("Compare All") : QStringLiteral("Leave All Out"));
        connect(button, &QAbstractButton::clicked, this, [this, isChecked] { checkAll(isChecked); });
        head->addWidget(button);
    }
    column->addLayout(head);
    showBoxes();
}

void ChoiceCard::refresh(const ComparePresentation& shown) {
    summary_ = shown.choiceSummary();
    const bool areSame =
        std::ranges::equal(repositories_, shown.repositories(), [](const auto& left, const auto& right) {
            return left.path == right.path && left.label == right.label;
        });
    repositories_ = shown.repositories();
    if (summaryLabel_ == nullptr) return;
    if (!areSame) showBoxes();
    summaryLabel_->setText(DisplayText::own(summary_));
    for (std::size_t index = 0; index < boxes_.size(); ++index) {
        const QSignalBlocker quiet(boxes_[index]);
        boxes_[index]->setChecked(repositories_[index].isCompared);
    }
}

void ChoiceCard::showBoxes() {
    delete list_;
    boxes_.clear();
    list_ = new QWidget;
    AccessibleTraits::setRole(list_, QAccessible::List, DisplayText::own(ComparePresentation::choiceTitle));
    auto* rows = new AdaptiveLayout(AdaptiveLayout::rows(narrowestBox, gap), list_);
    for (const ComparePresentation::Repository& repository : repositories_) {
        const QString name = DisplayText::line(repository.label);
        auto* box = new QCheckBox(beside(name));
        box->setChecked(repository.isCompared);
        PlainToolTip::set(*box, DisplayText::line(repository.path));
        box->setAccessibleName(name);
        AppTheme::bind(box, [box] { box->setFont(AppTheme::current().font(TextStyle::body)); });
        connect(box, &QCheckBox::toggled, this, &ChoiceCard::tellChange);
        boxes_.push_back(box);
        rows->addWidget(box);
    }
    summaryLabel_->setText(DisplayText::own(summary_));
    body_->layout()->addWidget(list_);
    list_->show();
}

void ChoiceCard::checkAll(bool isChecked) {
    for (QCheckBox* box : boxes_) {
        const QSignalBlocker quiet(box);
        box->setChecked(isChecked);
    }
    tellChange();
}

void ChoiceCard::tellChange() {
    std::set<std::string> leftOut;
    for (std::size_t index = 0; index < boxes_.size(); ++index)
        if (!boxes_[index]->isChecked()) leftOut.insert(repositories_[index].path);
    Q_EMIT leftOutChanged(leftOut);
}

} // namespace loadscope
