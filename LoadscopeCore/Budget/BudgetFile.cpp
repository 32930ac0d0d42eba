// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/Budget.h"
#include "LoadscopeCore/Budget/PathPattern.h"
#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace loadscope::BudgetFile {
namespace {

using Result = std::variant<Contents, Failure>;

/// Walks over a text and counts the lines that it has passed, for whoever reads from it.
class CountingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* place, std::size_t* line) : place_(place), line_(line) {}

    reference operator*() const { return *place_; }
    CountingIterator& operator++() {
        if (*place_ == '\n') ++*line_;
        ++place_;
        return *this;
    }
    CountingIterator operator++(int) {
        CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return place_ == other.place_; }
    bool operator!=(const CountingIterator& other) const { return place_ != other.place_; }

private:
    const char* place_;
    std::size_t* line_;
};

/// Takes the events of a parser and makes a budget of them; the first thing that is wrong ends it.
class Reader : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit Reader(const std::size_t& line) : line_(line) {}

    [[nodiscard]] Result result() && {
        if (failure_) return *std::move(failure_);
        return std::move(contents_);
    }

    bool null() override { return value("null"); }
    bool boolean(bool) override { return value("true or false"); }
    bool number_integer(number_integer_t number) override { return limit(number); }
    bool number_unsigned(number_unsigned_t number) override {
        constexpr auto most = static_cast<number_unsigned_t>(std::numeric_limits<std::int64_t>::max());
        return number <= most ? limit(static_cast<std::int64_t>(number)) : value("a number beyond 64 bits");
    }
    bool number_float(number_float_t, const string_t& text) override {
        return value("the number " + text.substr(0, longestShown));
    }
    bool string(string_t&) override { return value("a text"); }
    bool binary(binary_t&) override { return false; }
    bool start_array(std::size_t) override { return value("a list"); }
    bool end_array() override { return true; }

    bool start_object(std::size_t) override {
        if (depth_ == 0 || skipping_ > 0 || isPassedOver() || isGroup() || isFile()) return enter();
        return value("an object");
    }
    bool end_object() override {
        if (skipping_ > 0) --skipping_;
        if (depth_ == 3 && skipping_ == 0 && unit_) return fail("has no \"tokens\" and no \"bytes\"");
        --depth_;
        if (depth_ > 0) keys_.resize(std::min(keys_.size(), depth_ - 1));
        return true;
    }
    bool key(string_t& text) override {
        keys_.resize(depth_ - 1);
        keys_.push_back(text);
        if (skipping_ > 0 || depth_ != 1 || isKnown(text)) return true;
        contents_.warnings.push_back("Line " + std::to_string(line_) + ": the key \"" + shown(text) +
                                     "\" is not known and is passed over.");
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        if (!failure_) failure_ = {"line " + std::to_string(line_) + ": this is not JSON."};
        return false;
    }

private:
    static constexpr std::size_t longestShown = 60;

    static bool isKnown(const std::string& key) {
        constexpr std::array<std::string_view, 7> known{
            "maxTokens", "maxIncrease", "categories", "servers", "files", "codexInstructionBytes", "$schema"};
        return std::find(known.begin(), known.end(), key) != known.end();
    }
    static std::string shown(const std::string& key) {
        return Text::visible(Text::prefix(key, longestShown));
    }

    /// Behind a key at the top that holds limits by name.
    [[nodiscard]] bool isGroup() const {
        return depth_ == 1 && (keys_[0] == "categories" || keys_[0] == "servers" || keys_[0] == "files");
    }
    [[nodiscard]] bool isFile() const { return depth_ == 2 && keys_[0] == "files"; }
    [[nodiscard]] bool isPassedOver() const {
        return depth_ >= 1 && !keys_.empty() && (keys_[0] == "$schema" || !isKnown(keys_[0]));
    }

    bool enter() {
        if (skipping_ > 0 || isPassedOver()) ++skipping_;
        ++depth_;
        unit_ = depth_ == 3 && skipping_ == 0;
        return true;
    }

    bool fail(const std::string& what) {
        std::string path;
        for (const std::string& key : keys_)
            path += (path.empty() ? "" : ".") + shown(key);
        failure_ = {"line " + std::to_string(line_) + ": \"" + path + "\" " + what + '.'};
        return false;
    }

    /// A value that no limit can be.
    bool value(const std::string& what) {
        if (depth_ == 0) {
            failure_ = {"line " + std::to_string(line_) + ": a budget is a JSON object, not " + what + '.'};
            return false;
        }
        if (skipping_ > 0 || isPassedOver()) return true;
        return fail("must be a whole number of at least 0, not " + what);
    }

    bool limit(std::int64_t number) {
        if (depth_ == 0 || skipping_ > 0 || isPassedOver()) return value("a number");
        if (number < 0) return value(std::to_string(number));
        Budget& budget = contents_.budget;
        if (depth_ == 1) {
            if (isGroup()) return fail("must be an object of names and limits");
            (keys_[0] == "maxTokens"     ? budget.maxTokens
             : keys_[0] == "maxIncrease" ? budget.maxIncrease
                                         : budget.codexInstructionBytes) = number;
            return true;
        }
        return addNamed(number);
    }

    bool addNamed(std::int64_t number) {
        Budget::Named named{keys_[1], number, Budget::Unit::tokens};
        if (depth_ == 3) {
            if (keys_[2] != "tokens" && keys_[2] != "bytes")
                return fail("is neither \"tokens\" nor \"bytes\"");
            if (keys_[2] == "bytes") named.unit = Budget::Unit::bytes;
            unit_ = false;
        }
        if (keys_[0] == "files" && !PathPattern::isAllowed(named.name))
            return fail("is no pattern of paths within the repository");
        Budget& budget = contents_.budget;
        auto& list = keys_[0] == "categories" ? budget.categories
                     : keys_[0] == "servers"  ? budget.servers
                                              : budget.files;
        list.push_back(std::move(named));
        if (++limits_ > mostLimits) return fail("is one limit too many");
        return true;
    }

    const std::size_t& line_;
    Contents contents_;
    std::optional<Failure> failure_;
    std::vector<std::string> keys_; ///< from the top to the value that is read
    std::size_t depth_ = 0;         ///< of objects
    std::size_t skipping_ = 0;      ///< of these, those below an unknown key
    std::size_t limits_ = 0;
    bool unit_ = false; ///< an object of a file is open and has said nothing yet
};

Failure systemFailure(int error) {
    if (error == ELOOP) return {"is a link. A budget must be a file of the repository itself."};
    if (error == EACCES || error == EPERM) return {"may not be read."};
    if (error == ENOENT || error == ENOTDIR) return {"does not exist."};
    return {std::string("could not be read: ") + std::strerror(error) + '.'};
}

Result read(const std::string& path, int flags) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return systemFailure(errno);
    if (!S_ISREG(status.st_mode)) return Failure{"is not a file."};
    std::string text;
    std::array<char, 65536> piece{};
    for (;;) {
        const ssize_t count = ::read(file.get(), piece.data(), piece.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemFailure(errno);
        if (count == 0) return parse(text);
        text.append(piece.data(), static_cast<std::size_t>(count));
        if (text.size() > largestFile) return Failure{"is larger than a budget can be (1 MB)."};
    }
}

} // namespace

std::variant<Contents, Failure> parse(std::string_view text) {
    if (Text::trimmed(text).empty()) return Failure{"is empty."};
    std::size_t line = 1;
    Reader reader(line);
    const char* const end = text.data() + text.size();
    nlohmann::json::sax_parse(CountingIterator(text.data(), &line), CountingIterator(end, &line), &reader);
    return std::move(reader).result();
}

std::optional<std::variant<Contents, Failure>> ofRepository(const std::string& repository) {
    const std::string path = FilePath::joined(repository, Budget::fileName);
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
    return read(path, O_NOFOLLOW);
}

std::variant<Contents, Failure> load(const std::string& path) { return read(path, 0); }

} // namespace loadscope::BudgetFile
