// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <vector>

class QButtonGroup;

namespace loadscope {

class SegmentButton;
class TextField;

/// Which model a scan asks for: one of those that everybody knows, or any other by its name. A name in the
/// field wins; while it is empty, the choice above it counts.
class ModelPicker : public QWidget {
    Q_OBJECT

public:
    explicit ModelPicker(QWidget* parent = nullptr);

    void setModel(const QString& model);
    /// Its controls, each by itself, as a window behind a sheet keeps its look.
    void setChangeable(bool changeable);

Q_SIGNALS:
    /// The user chose; never an empty name, nor one that a tool could take for an option.
    void chosen(const QString& model);

private:
    [[nodiscard]] QString typed() const;
    void choose(std::size_t choice);
    void type();
    void check(const SegmentButton* wanted);

    QButtonGroup* group_;
    std::vector<SegmentButton*> choices_;
    TextField* other_;
    std::size_t last_ = 0; ///< what counts again when the field is emptied
};

} // namespace loadscope
