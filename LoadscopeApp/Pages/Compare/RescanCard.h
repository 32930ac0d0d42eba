// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Scan/ScanBatch.h"

#include <cstddef>
#include <vector>

class QVBoxLayout;

namespace loadscope {

class PushButton;
class TextLabel;

/// Scans every recorded repository once more: a button, and while it goes on and after it a line for each
/// folder with what becomes of it, and a way to stop one or all.
class RescanCard : public ReportSurface {
    Q_OBJECT

public:
    explicit RescanCard(QWidget* parent = nullptr);
    ~RescanCard() override;

    struct Input {
        std::vector<ScanBatch::Item> items; ///< of the last run; empty before the first
        bool isRunning = false;
        std::size_t repositories = 0; ///< that would be scanned
        std::size_t jobs = 1;
        QString blocker{}; ///< why nothing can be scanned now; empty when it can
    };
    void refresh(const Input& input);

Q_SIGNALS:
    void rescanRequested();
    void cancelRequested(std::size_t index);
    void cancelAllRequested();

private:
    class Row;

    TextLabel* detail_;
    PushButton* button_;
    QWidget* list_;
    QVBoxLayout* rows_;
    std::vector<Row*> lines_;
    bool isRunning_ = false;
};

} // namespace loadscope
