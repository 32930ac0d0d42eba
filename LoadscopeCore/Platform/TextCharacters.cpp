// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// The part of `Text.h` that sees user-perceived characters.

#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

namespace loadscope {

namespace {

/// The break iterator of a thread: opening one costs far more than using it.
UBreakIterator* threadIterator() {
    struct Closer {
        void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
    };
    static thread_local const std::unique_ptr<UBreakIterator, Closer> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<UBreakIterator, Closer>(
            ubrk_open(UBRK_CHARACTER, "root", nullptr, 0, &status));
    }();
    return iterator.get();
}

/// Walks a text by user-perceived characters. Two neighbouring ASCII characters are told apart without ICU;
/// elsewhere ICU sees one window of the text at a time, so that the first characters of a huge text cost
/// nothing for the rest of it. One walk per thread at a time: its iterator is shared.
class CharacterWalk {
public:
    explicit CharacterWalk(std::string_view text) : text_(text) {}

    [[nodiscard]] std::size_t offset() const { return offset_; }
    [[nodiscard]] bool atEnd() const { return offset_ == text_.size(); }

    /// Moves behind the next character; not to be called at the end.
    void advance() {
        if (offset_ >= windowEnd_ && !advanceWithoutIterator()) openWindow();
        if (offset_ < windowEnd_) advanceInWindow();
    }

private:
    /// Handles an ASCII character before another one and a byte that is not valid.
    bool advanceWithoutIterator() {
        const auto isASCII = [this](std::size_t at) { return static_cast<unsigned char>(text_[at]) < 0x80; };
        const std::size_t next = offset_ + 1;
        if (isASCII(offset_) && (next == text_.size() || isASCII(next))) {
            const bool isCRLF = next < text_.size() && text_[offset_] == '\r' && text_[next] == '\n';
            offset_ = isCRLF ? next + 1 : next;
            return true;
        }
        const Utf8::Character character = Utf8::at(text_, offset_);
        if (character.isValid() && threadIterator() != nullptr) return false;
        offset_ += character.size;
        return true;
    }

    void openWindow() {
        windowBegin_ = offset_;
        const std::size_t limit = std::min(text_.size() - offset_, windowSize_);
        const std::size_t size = Utf8::validPrefix(text_.substr(offset_, limit));
        // A window may end within a character, and a character of the user may go on behind it.
        mayContinue_ = offset_ + limit < text_.size() && limit - size < 4;
        UErrorCode status = U_ZERO_ERROR;
        UText* const view =
            utext_openUTF8(nullptr, text_.data() + offset_, static_cast<std::int64_t>(size), &status);
        ubrk_setUText(threadIterator(), view, &status);
        utext_close(view);
        windowEnd_ = offset_ + size;
        if (U_FAILURE(status)) {
            windowEnd_ = offset_;
            offset_ += Utf8::at(text_, offset_).size;
        }
    }

    void advanceInWindow() {
        while (true) {
            const std::int32_t boundary = ubrk_next(threadIterator());
            const std::size_t next =
                boundary == UBRK_DONE ? windowEnd_ : windowBegin_ + static_cast<std::size_t>(boundary);
            if (next < windowEnd_ || !mayContinue_ || windowSize_ >= largestWindow) {
                offset_ = next;
                return;
            }
            if (windowBegin_ == offset_) windowSize_ *= 4;
            openWindow();
            if (offset_ >= windowEnd_) return;
        }
    }

    // ICU's positions have 32 bits; only a character of 256 MiB would be cut by this.
    static constexpr std::size_t largestWindow = std::size_t{1} << 28;

    std::string_view text_;
    std::size_t offset_ = 0;
    std::size_t windowBegin_ = 0;
    std::size_t windowEnd_ = 0;
    std::size_t windowSize_ = 1024;
    bool mayContinue_ = false;
};

std::string normalized(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* const normalizer = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) return std::string(text);
    std::string result;
    result.reserve(text.size());
    Utf8::forEachRun(
        text,
        [&](std::string_view run) {
            UErrorCode runStatus = U_ZERO_ERROR;
            const std::size_t before = result.size();
            icu::StringByteSink<std::string> sink(&result);
            normalizer->normalizeUTF8(0, {run.data(), static_cast<std::int32_t>(run.size())}, sink, nullptr,
                                      runStatus);
            if (U_FAILURE(runStatus)) result.replace(before, std::string::npos, run);
        },
        [&](char byte) { result.push_back(byte); });
    return result;
}

bool isASCII(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::size_t columns(std::int32_t character) {
    if (character < 0) return 1;
    if (character >= 0x20 && character < 0x7F) return 1;
    if ((U_GET_GC_MASK(character) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_C_MASK)) != 0 &&
        u_charType(character) != U_PRIVATE_USE_CHAR && u_charType(character) != U_UNASSIGNED)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// A vowel sign, a letter joined to the one before or the like, which a terminal draws in a cell of its own.
/// The vowels and endings of Hangul are drawn in the cells of their syllable.
bool standsBeside(std::int32_t character) {
    const int hangul = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    return (U_GET_GC_MASK(character) & (U_GC_L_MASK | U_GC_MC_MASK)) != 0 && hangul != U_HST_VOWEL_JAMO &&
           hangul != U_HST_TRAILING_JAMO;
}

/// Columns of one user-perceived character. A terminal draws it in the cells of its widest part and of the
/// letters beside it; flags and characters with the emoji variation selector are drawn wide although their
/// parts are narrow.
std::size_t columnsOfCharacter(std::string_view character) {
    std::size_t widest = 0;
    std::size_t beside = 0;
    std::size_t regionalIndicators = 0;
    bool isEmoji = false;
    for (std::size_t offset = 0; offset < character.size();) {
        const Utf8::Character part = Utf8::at(character, offset);
        if (offset > 0 && part.isValid() && standsBeside(part.value))
            beside += columns(part.value);
        else
            widest = std::max(widest, columns(part.value));
        isEmoji = isEmoji || part.value == 0xFE0F;
        if (part.value >= 0x1F1E6 && part.value <= 0x1F1FF) ++regionalIndicators;
        offset += part.size;
    }
    return (widest == 1 && (isEmoji || regionalIndicators == 2) ? 2 : widest) + beside;
}

} // namespace

std::size_t Text::characterCount(std::string_view text) {
    std::size_t count = 0;
    for (CharacterWalk walk(text); !walk.atEnd(); walk.advance())
        ++count;
    return count;
}

std::string_view Text::prefix(std::string_view text, std::size_t count) {
    // No character is shorter than a byte.
    if (count >= text.size()) return text;
    CharacterWalk walk(text);
    for (; count > 0 && !walk.atEnd(); --count)
        walk.advance();
    return text.substr(0, walk.offset());
}

int Text::compareCanonically(std::string_view left, std::string_view right) {
    // The bytes of UTF-8 order as the code points do.
    if (left == right || (isASCII(left) && isASCII(right))) return left.compare(right);
    return normalized(left).compare(normalized(right));
}

std::size_t Text::terminalWidth(std::string_view text) {
    const auto isOneColumn = [](char character) { return character >= ' ' && character <= '~'; };
    if (std::all_of(text.begin(), text.end(), isOneColumn)) return text.size(); // nearly always
    std::size_t width = 0;
    for (CharacterWalk walk(text); !walk.atEnd();) {
        const std::size_t begin = walk.offset();
        walk.advance();
        width += columnsOfCharacter(text.substr(begin, walk.offset() - begin));
    }
    return width;
}

} // namespace loadscope
