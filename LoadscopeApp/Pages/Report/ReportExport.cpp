// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportExport.h"

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Report/BreakdownSection.h"
#include "LoadscopeApp/Pages/Report/InstructionFilesSection.h"
#include "LoadscopeApp/Pages/Report/ReportBlocks.h"
#include "LoadscopeApp/Pages/Report/ReportPages.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Presentation/ScanCsv.h"
#include "LoadscopeCore/Presentation/ScanHtml.h"
#include "LoadscopeCore/Presentation/ScanMarkdown.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <QVBoxLayout>

#include <algorithm>

namespace loadscope::ReportExport {
namespace {

constexpr int pictureWidth = 960;
constexpr int treemapHeight = 540;
constexpr double pixelRatio = 2;
constexpr int pixelsPerInch = 96; ///< of style sheets, so that a browser shows a picture in its own size
/// The painting system counts in 16 bits.
constexpr double mostPixels = 32'000;

void addSubject(QVBoxLayout* column, const std::shared_ptr<const ScanReport>& report, Subject subject) {
    switch (subject) {
    case Subject::breakdown:
        column->addWidget(new BreakdownSection(*report));
        return;
    case Subject::files: {
        TreemapView* treemap = InstructionFilesSection::treemap(FilesPresentation::files(*report));
        treemap->setFixedHeight(treemapHeight);
        column->addWidget(treemap);
        return;
    }
    case Subject::report:
        break;
    }
    for (QWidget* block : reportBlocks(report, nullptr))
        column->addWidget(block);
}

/// What is pictured, never shown: laid out at the width of a picture, with everything expanded and without
/// anything that can only be clicked.
std::unique_ptr<QWidget> scene(const std::shared_ptr<const ScanReport>& report, Subject subject) {
    auto scene = std::make_unique<QWidget>();
    auto* column = new QVBoxLayout(scene.get());
    column->setContentsMargins(Metrics::pageMargin, Metrics::pageMargin, Metrics::pageMargin,
                               Metrics::pageMargin);
    column->setSpacing(Metrics::blockSpacing);
    addSubject(column, report, subject);
    column->addStretch();
    // Its least height is that of a narrower picture.
    column->setSizeConstraint(QLayout::SetNoConstraint);
    for (auto* section : scene->findChildren<CollapsibleSection*>())
        section->setExpanded(true);
    for (auto* button : scene->findChildren<PushButton*>())
        button->hide();
    scene->setAttribute(Qt::WA_DontShowOnScreen);
    scene->ensurePolished();
    column->activate();
    scene->resize(pictureWidth, column->heightForWidth(pictureWidth));
    // What is never shown gets its widths when it is first painted; only then it is clear how high it is.
    QImage nothing(1, 1, QImage::Format_RGB32);
    scene->render(&nothing);
    const QLayoutItem* last = column->itemAt(column->count() - 2);
    scene->resize(pictureWidth, last->geometry().bottom() + 1 + Metrics::pageMargin);
    return scene;
}

void paint(QPainter& painter, QWidget& scene) {
    painter.fillRect(scene.rect(), AppTheme::current().color(ThemeColor::window));
    scene.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
}

QByteArray png(QWidget& scene) {
    const double ratio = std::min(pixelRatio, mostPixels / scene.height());
    QImage image((QSizeF(scene.size()) * ratio).toSize(), QImage::Format_RGB32);
    if (image.isNull()) return {};
    QPainter painter(&image);
    painter.scale(ratio, ratio);
    paint(painter, scene);
    painter.end();
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data();
}

QByteArray svg(QWidget& scene, const QString& title) {
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(pixelsPerInch);
    generator.setSize(scene.size());
    generator.setViewBox(scene.rect());
    generator.setTitle(title);
    QPainter painter(&generator);
    paint(painter, scene);
    painter.end();
    return buffer.data();
}

QString suffix(Format format) {
    switch (format) {
    case Format::png:
        return QStringLiteral("png");
    case Format::svg:
        return QStringLiteral("svg");
    case Format::pdf:
        return QStringLiteral("pdf");
    case Format::html:
        return QStringLiteral("html");
    case Format::markdown:
        return QStringLiteral("md");
    case Format::csv:
        return QStringLiteral("csv");
    case Format::json:
        break;
    }
    return QStringLiteral("json");
}

} // namespace

bool isPaged(Format format) { return format == Format::pdf; }

bool isOffered(const ScanReport& report, Subject subject) {
    switch (subject) {
    case Subject::breakdown:
        return !report.rows.empty();
    case Subject::files: {
        const std::vector<InstructionFileEstimate> files = report.files();
        return std::any_of(files.begin(), files.end(),
                           [](const auto& file) { return file.estimatedTokens > 0; });
    }
    case Subject::report:
        break;
    }
    return true;
}

QString fileName(const ScanReport& report, Subject subject, Format format) {
    const QString what = subject == Subject::breakdown ? QStringLiteral("-breakdown")
                         : subject == Subject::files   ? QStringLiteral("-instruction-files")
                                                       : QStringLiteral("-context-report");
    return DisplayText::own(FilePath::namePiece(report.repositoryName)) + what + QLatin1Char('.') +
           suffix(format);
}

QByteArray bytes(const std::shared_ptr<const ScanReport>& report, Subject subject, Format format) {
    switch (format) {
    case Format::png:
        return png(*scene(report, subject));
    case Format::svg:
        return svg(*scene(report, subject), fileName(*report, subject, format));
    case Format::pdf:
        return ReportPages::pdf(*report);
    case Format::html:
        return QByteArray::fromStdString(ScanHtml::report(*report));
    case Format::markdown:
        return QByteArray::fromStdString(ScanMarkdown::report(*report, {}, nullptr));
    case Format::csv:
        return QByteArray::fromStdString(ScanCsv::report(*report));
    case Format::json:
        break;
    }
    return QByteArray::fromStdString(ScanReportJson::report(*report) + "\n");
}

} // namespace loadscope::ReportExport
