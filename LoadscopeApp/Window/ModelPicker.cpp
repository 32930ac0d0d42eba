// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/ModelPicker.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/SegmentButton.h"
#include "LoadscopeApp/Controls/TextField.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <array>

namespace loadscope {
namespace {

struct KnownModel {
    const char* title;
    const char* name;
};

constexpr std::array knownModels{KnownModel{"Sonnet", ProbeSettings::defaultModel},
                                 KnownModel{"Opus", "opus"}, KnownModel{"Haiku", "haiku"}};
constexpr int spacing = 6;
constexpr int longestName = 200;

/// Nothing that the tool could take for an option, and no control characters.
QRegularExpression namePattern() {
    return QRegularExpression(QStringLiteral("\\s*([^-\\s\\x00-\\x1f\\x7f][^\\x00-\\x1f\\x7f]*)?\\s*"));
}

} // namespace

ModelPicker::ModelPicker(QWidget* parent)
    : QWidget(parent), group_(new QButtonGroup(this)), other_(new TextField(QStringLiteral("Other model"))) {
    AccessibleTraits::setRole(this, QAccessible::Grouping, QStringLiteral("Model"));
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing);
    for (std::size_t index = 0; index < knownModels.size(); ++index) {
        auto* choice = new SegmentButton(QString::fromLatin1(knownModels.at(index).title));
        choices_.push_back(choice);
        group_->addButton(choice);
        row->addWidget(choice);
        connect(choice, &QRadioButton::toggled, this, [this, index](bool on) {
            if (on) choose(index);
        });
    }
    other_->setMaxLength(longestName);
    other_->setValidator(new QRegularExpressionValidator(namePattern(), other_));
    connect(other_, &QLineEdit::textEdited, this, &ModelPicker::type);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    column->addWidget(new TextLabel(QStringLiteral("Model")));
    column->addLayout(row);
    column->addWidget(other_);
    check(choices_.front());
}

QString ModelPicker::typed() const { return other_->text().trimmed(); }

void ModelPicker::choose(std::size_t choice) {
    last_ = choice;
    other_->clear();
    Q_EMIT chosen(QString::fromLatin1(knownModels.at(choice).name));
}

void ModelPicker::type() {
    const bool isEmpty = typed().isEmpty();
    check(isEmpty ? choices_.at(last_) : nullptr);
    Q_EMIT chosen(isEmpty ? QString::fromLatin1(knownModels.at(last_).name) : typed());
}

void ModelPicker::setModel(const QString& model) {
    if (model == typed()) return;
    for (std::size_t index = 0; index < knownModels.size(); ++index) {
        if (model != QLatin1String(knownModels.at(index).name)) continue;
        last_ = index;
        check(choices_.at(index));
        other_->clear();
        return;
    }
    check(nullptr);
    other_->setText(model);
    other_->setCursorPosition(0); // a long name is read from its beginning
}

void ModelPicker::check(const SegmentButton* wanted) {
    group_->setExclusive(false); // else one of them could not be let go
    for (SegmentButton* choice : choices_) {
        const QSignalBlocker silent(choice);
        choice->setChecked(choice == wanted);
        choice->update();
    }
    group_->setExclusive(true);
}

void ModelPicker::setChangeable(bool changeable) {
    for (SegmentButton* choice : choices_)
        choice->setEnabled(changeable);
    other_->setEnabled(changeable);
}

} // namespace loadscope
