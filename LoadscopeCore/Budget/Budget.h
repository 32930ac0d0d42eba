// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace loadscope {

/// What a repository may cost at the start of a session, as its budget file says. Limits are inclusive.
struct Budget {
    static constexpr const char* fileName = ".loadscope.json";

    enum class Unit { tokens, bytes };

    /// A limit for something that has a name: a category, a server, or the files that a pattern matches,
    /// together.
    struct Named {
        std::string name;
        std::int64_t limit = 0;
        Unit unit = Unit::tokens;

        bool operator==(const Named&) const = default;
    };

    std::optional<std::int64_t> maxTokens{};   ///< of the tool's total
    std::optional<std::int64_t> maxIncrease{}; ///< of that total, against a baseline
    std::vector<Named> categories{};
    std::vector<Named> servers{};
    std::vector<Named> files{}; ///< patterns of paths below the repository
    std::optional<std::int64_t> codexInstructionBytes{};

    [[nodiscard]] bool isEmpty() const { return *this == Budget(); }
    bool operator==(const Budget&) const = default;
};

/// Reads budget files. Never throws, opens nothing but regular files.
namespace BudgetFile {

inline constexpr std::size_t largestFile = 1'000'000;
inline constexpr std::size_t mostLimits = 10'000;

/// Why a budget file cannot be used, ready to be shown behind its name: the line, the key, what is wrong.
struct Failure {
    std::string reason;

    bool operator==(const Failure&) const = default;
};

struct Contents {
    Budget budget;
    std::vector<std::string> warnings; ///< one sentence for each unknown key

    bool operator==(const Contents&) const = default;
};

[[nodiscard]] std::variant<Contents, Failure> parse(std::string_view text);

/// The file that belongs to a repository; nothing when there is none. One that is a link is refused: it could
/// lead out of the repository.
[[nodiscard]] std::optional<std::variant<Contents, Failure>> ofRepository(const std::string& repository);

/// A file that the user names; links are followed.
[[nodiscard]] std::variant<Contents, Failure> load(const std::string& path);

} // namespace BudgetFile
} // namespace loadscope
