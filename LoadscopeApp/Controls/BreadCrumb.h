// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class QHBoxLayout;

namespace loadscope {

/// Where one is within something that holds others: the way there, each step a button that leads back to it,
/// then the place itself.
class BreadCrumb : public QWidget {
    Q_OBJECT

public:
    explicit BreadCrumb(const QString& name, QWidget* parent = nullptr);

    /// From the outermost to where one is.
    void setSteps(const QStringList& steps);

Q_SIGNALS:
    /// A step was pressed; 0 is the outermost.
    void stepChosen(int step);

private:
    QHBoxLayout* row_;
};

} // namespace loadscope
