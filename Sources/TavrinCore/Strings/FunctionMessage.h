// A message with parameters: a row of FunctionMessages.def, made into something that can be called.
//
// Its placeholders bear the names of its parameters, and a row whose texts and parameters don't belong together doesn't
// compile.
#pragma once

#include "TavrinCore/Strings/Language.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace tavrin {

/// A message with parameters, as its row says it.
struct FunctionMessageRow {
    std::string_view key;
    /// As written in the row: "(Count count, Text size)".
    std::string_view parameters;
    /// For a count of exactly 1. The same as `english` in a row that doesn't tell them apart.
    std::string_view englishOne;
    std::string_view english;
    /// One for every count: it carries its plural mark inside the word.
    std::string_view spanish;

    friend bool operator==(const FunctionMessageRow&, const FunctionMessageRow&) = default;
};

namespace strings {

/// What a parameter may be: a number, written in plain decimal without grouping, or text that is taken as it stands.
using Count = std::int64_t;
using Text = std::string_view;

/// The parameter names of "(Count count, Text size)": {"count", "size"}.
template <std::size_t N>
constexpr std::array<std::string_view, N> parameterNames(std::string_view parameters) {
    std::array<std::string_view, N> names{};
    std::size_t found = 0;
    for (std::size_t start = 0; start < parameters.size();) {
        const std::size_t end = parameters.find_first_of(",)", start);
        if (end == std::string_view::npos || found == N)
            throw std::logic_error("the parameters of this message can't be read");
        const std::string_view parameter = parameters.substr(start, end - start);
        names.at(found++) = parameter.substr(parameter.rfind(' ') + 1);
        start = end + 1;
    }
    return names;
}

/// Cuts `rest` behind its next {placeholder} and gives the name; empty when there is none.
constexpr std::string_view nextPlaceholder(std::string_view& rest) {
    const std::size_t open = rest.find('{');
    if (open == std::string_view::npos) return {};
    const std::size_t close = rest.find('}', open);
    if (close == std::string_view::npos) throw std::logic_error("a placeholder of this message isn't closed");
    const std::string_view name = rest.substr(open + 1, close - open - 1);
    rest.remove_prefix(close + 1);
    if (name.empty()) throw std::logic_error("a placeholder of this message has no name");
    return name;
}

/// Throws, and so ends the compilation, when `pattern` has a placeholder that is no parameter, or lacks one that is.
template <std::size_t N>
constexpr void requirePlaceholders(std::string_view pattern, const std::array<std::string_view, N>& names) {
    std::array<bool, N> used{};
    std::string_view rest = pattern;
    for (auto name = nextPlaceholder(rest); !name.empty(); name = nextPlaceholder(rest)) {
        const auto* found = std::ranges::find(names, name);
        if (found == names.end()) throw std::logic_error("a placeholder of this message is none of its parameters");
        used.at(static_cast<std::size_t>(found - names.begin())) = true;
    }
    if (!std::ranges::all_of(used, std::identity()))
        throw std::logic_error("a parameter of this message is in none of its placeholders");
}

/// `pattern` with each {name} replaced by the value of that name. What a value holds is not looked at again: a file
/// called "{n}" stays that.
[[nodiscard]] std::string filledIn(std::string_view pattern, std::span<const std::string_view> names,
                                   std::span<const std::string_view> values);

/// A value as it stands in the text, valid as long as this object and the text behind it.
class Value {
  public:
    explicit Value(Count number) : decimal_(std::to_string(number)), text_(decimal_) {}
    explicit Value(Text text) : text_(text) {}
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    [[nodiscard]] std::string_view text() const { return text_; }

  private:
    std::string decimal_;
    std::string_view text_;
};

}  // namespace strings

/// A message with parameters: FunctionMessage<std::string(Count count, Text size)> is called with a count and a size,
/// in this order, and gives the text in the running language.
template <class Signature>
class FunctionMessage;

template <class... Parameters>
class FunctionMessage<std::string(Parameters...)> {
    static_assert(((std::is_same_v<Parameters, strings::Count> || std::is_same_v<Parameters, strings::Text>)&&...));
    static constexpr std::size_t countParameters = (std::size_t{std::is_same_v<Parameters, strings::Count>} + ...);

  public:
    /// A row that reads alike for every count.
    constexpr FunctionMessage(std::string_view key, std::string_view parameters, std::string_view english,
                              std::string_view spanish)
        : FunctionMessage(FunctionMessageRow{key, parameters, english, english, spanish}) {}

    /// A row with an English singular and plural.
    constexpr FunctionMessage(std::string_view key, std::string_view parameters, std::string_view englishOne,
                              std::string_view english, std::string_view spanish)
        : FunctionMessage(FunctionMessageRow{key, parameters, englishOne, english, spanish}) {
        if (countParameters != 1) throw std::logic_error("a singular needs one count to go by");
    }

    [[nodiscard]] std::string operator()(Parameters... values) const { return in(runningLanguage(), values...); }

    [[nodiscard]] std::string in(Language language, Parameters... values) const {
        return build(language, (isOne(values) || ...), strings::Value(values)...);
    }

    [[nodiscard]] constexpr const FunctionMessageRow& row() const { return row_; }

  private:
    explicit constexpr FunctionMessage(FunctionMessageRow row)
        : row_(row), names_(strings::parameterNames<sizeof...(Parameters)>(row.parameters)) {
        strings::requirePlaceholders(row.englishOne, names_);
        strings::requirePlaceholders(row.english, names_);
        strings::requirePlaceholders(row.spanish, names_);
    }

    static constexpr bool isOne(strings::Count count) { return count == 1; }
    static constexpr bool isOne(strings::Text) { return false; }

    template <class... Values>
    [[nodiscard]] std::string build(Language language, bool one, const Values&... values) const {
        const std::array<std::string_view, sizeof...(Parameters)> texts{values.text()...};
        const std::string_view english = one ? row_.englishOne : row_.english;
        return strings::filledIn(language == Language::spanish ? row_.spanish : english, names_, texts);
    }

    FunctionMessageRow row_;
    std::array<std::string_view, sizeof...(Parameters)> names_;
};

}  // namespace tavrin
