// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <QPointer>

#include <set>
#include <string>

class QCheckBox;

namespace loadscope {

class AdaptiveLayout;
class TextLabel;

/// Which of the recorded repositories stand side by side: a box for each, all of them checked at first. The
/// boxes are made when the section is first expanded; one that has the keyboard keeps it.
class ChoiceCard : public CollapsibleSection {
    Q_OBJECT

public:
    explicit ChoiceCard(QWidget* parent = nullptr);

    void refresh(const ComparePresentation& shown);

Q_SIGNALS:
    /// The paths of the repositories that are left out.
    void leftOutChanged(const std::set<std::string>& paths);

private:
    ChoiceCard(QWidget* body, QWidget* parent);
    void fill();
    void showBoxes();
    void tellChange();
    void checkAll(bool isChecked);

    std::vector<ComparePresentation::Repository> repositories_;
    std::string summary_;
    QWidget* body_;
    TextLabel* summaryLabel_ = nullptr; ///< this and the next from the first time that it is expanded
    QWidget* list_ = nullptr;
    std::vector<QCheckBox*> boxes_;
};

} // namespace loadscope
