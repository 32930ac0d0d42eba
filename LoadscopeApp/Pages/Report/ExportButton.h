// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Report/ReportExport.h"

#include <functional>
#include <memory>

namespace loadscope {

/// "Export…": offers the pictures and the data of a report, asks for a file and writes it.
class ExportButton : public PushButton {
    Q_OBJECT

public:
    /// Asks for the file to write; `done` gets its path and is not called when the user gives up.
    using FileChooser =
        std::function<void(QWidget* parent, const QString& suggestedName, std::function<void(QString)> done)>;

    explicit ExportButton(std::shared_ptr<const ScanReport> report, QWidget* parent = nullptr);

    /// Replaces the file dialog.
    void setFileChooser(FileChooser chooser) { chooser_ = std::move(chooser); }

Q_SIGNALS:
    /// What came of an export, for the user.
    void finished(const QString& message);

private:
    void add(const QString& title, ReportExport::Subject subject, ReportExport::Format format);
    void save(ReportExport::Subject subject, ReportExport::Format format);
    /// Asks for a printer, then prints the report's pages.
    void print();
    /// Does `work` beside the window, then calls `done` with what it gave, if the button is still there.
    void later(const std::function<bool()>& work, const std::function<void(ExportButton&, bool)>& done);

    std::shared_ptr<const ScanReport> report_;
    FileChooser chooser_;
};

} // namespace loadscope
