// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/LineBreaker.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>

namespace loadscope {
namespace {

std::vector<int> wordBoundaries(const QString& text) {
    std::vector<int> found;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (qsizetype at = finder.toNextBoundary(); at >= 0; at = finder.toNextBoundary())
        found.push_back(static_cast<int>(at));
    return found;
}

/// Finds what of `text` the ellipsis in `shown` stands for.
void tellHidden(BrokenText& result, const QString& text) {
    if (result.shown == text) return;
    const auto same = std::mismatch(result.shown.begin(), result.shown.end(), text.begin(), text.end());
    result.hiddenFrom = static_cast<int>(same.first - result.shown.begin());
    result.hidden = static_cast<int>(text.size() - result.shown.size()) + 1;
}

} // namespace

LineBreaker::LineBreaker(const QFont& font) : font_(font), metrics_(font), widths_(font) {}

double LineBreaker::width(const QString& text) const {
    return CharacterWidths::covers(text) ? widths_.of(text) : metrics_.horizontalAdvance(text);
}

LineBreaker::Lines LineBreaker::shapedLines(const QString& text, double room, bool anywhere) const {
    QTextLayout layout(text, font_);
    QTextOption option;
    option.setWrapMode(anywhere ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    Lines lines;
    for (QTextLine line = layout.createLine(); line.isValid() && lines.size() <= mostLines;
         line = layout.createLine()) {
        line.setLineWidth(room);
        lines.push_back({line.textStart(), line.textLength()});
    }
    layout.endLayout();
    return lines;
}

LineBreaker::Lines LineBreaker::lines(const QString& text, double room, bool anywhere) const {
    if (!CharacterWidths::covers(text)) return shapedLines(text, room, anywhere);
    const int size = static_cast<int>(text.size());
    const std::vector<int> boundaries = anywhere ? std::vector<int>() : wordBoundaries(text);
    auto boundary = boundaries.begin();
    Lines lines;
    int start = 0;
    int wordEnd = 0; ///< the last place on this line where words part
    double x = 0;
    for (int at = 0; at < size && lines.size() <= mostLines; ++at) {
        if (boundary != boundaries.end() && *boundary == at) wordEnd = *boundary++;
        x += widths_.of(text[at]);
        // A space at the end of a line may hang over.
        if (x <= room || at == start || text[at].isSpace()) continue;
        const int end = wordEnd > start ? wordEnd : at;
        lines.push_back({start, end - start});
        x = 0;
        for (int moved = end; moved <= at; ++moved)
            x += widths_.of(text[moved]);
        start = end;
    }
    if (lines.size() <= mostLines) lines.push_back({start, size - start});
    return lines;
}

int LineBreaker::lineCount(const QString& text, double natural, double room) const {
    if (natural <= room) return 1;
    return std::min(mostLines, static_cast<int>(lines(text, std::max(room, 1.0), false).size()));
}

BrokenText LineBreaker::broken(const QString& text, double room) const {
    room = std::max(room, 1.0);
    if (width(text) <= room) return {text, {{0, static_cast<int>(text.size())}}};
    BrokenText result{text, lines(text, room, false)};
    if (result.lines.size() <= mostLines) return result;
    // Words leave a part of each line unused, so that less than four lines' worth may fit on four.
    for (const double share : {1.0, 0.9, 0.8, 0.7, 0.0}) {
        // Each line that breaks anywhere still may leave nearly a character unused.
        const double line = share > 0 ? room * share : std::max(1.0, room - metrics_.maxWidth() / 2);
        result.shown = metrics_.elidedText(text, Qt::ElideMiddle, mostLines * line);
        result.lines = lines(result.shown, room, share == 0);
        if (result.lines.size() <= mostLines) break;
    }
    if (result.lines.size() > mostLines) result.lines.resize(mostLines);
    tellHidden(result, text);
    return result;
}

BrokenText LineBreaker::cut(const QString& text, double room) const {
    BrokenText result;
    result.shown = width(text) <= room ? text : metrics_.elidedText(text, Qt::ElideRight, room);
    result.lines = {{0, static_cast<int>(result.shown.size())}};
    tellHidden(result, text);
    return result;
}

} // namespace loadscope
