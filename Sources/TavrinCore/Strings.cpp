#include "TavrinCore/Strings.h"

#include "TavrinCore/Platform/Locale.h"

#include <algorithm>
#include <cassert>
#include <cerrno>

namespace tavrin {
namespace {

constexpr StaticMessage kStaticMessages[] = {
#define TAVRIN_MESSAGE(key, english, spanish) {#key, english, spanish},
#include "TavrinCore/Strings/Messages.def"
#undef TAVRIN_MESSAGE
};

constexpr FunctionMessageRow kFunctionMessages[] = {
#define TAVRIN_FUNCTION_MESSAGE(key, parameters, ...) S::key.row(),
#include "TavrinCore/Strings/FunctionMessages.def"
#undef TAVRIN_FUNCTION_MESSAGE
};

// The names of error numbers are macros: the # has to meet them before they are replaced.
constexpr StaticMessage kSystemTexts[] = {
#define TAVRIN_SYSTEM_TEXT(key, english, spanish) {#key, english, spanish},
#define TAVRIN_SYSTEM_REFUSAL(errorNumber, english, spanish) {#errorNumber, english, spanish},
#include "TavrinCore/Strings/SystemTexts.def"
#undef TAVRIN_SYSTEM_TEXT
#undef TAVRIN_SYSTEM_REFUSAL
};

constexpr StaticMessage kNameTexts[] = {
#define TAVRIN_NAME(key, english, spanish) {#key, english, spanish},
#include "TavrinCore/Strings/NameTexts.def"
#undef TAVRIN_NAME
};

constexpr StaticMessage kWindowTexts[] = {
#define TAVRIN_WINDOW_TEXT(key, english, spanish) {#key, english, spanish},
#include "TavrinCore/Strings/WindowTexts.def"
#undef TAVRIN_WINDOW_TEXT
};

struct Refusal {
    int errorNumber;
    StaticMessage sentence;
};
constexpr Refusal kRefusals[] = {
#define TAVRIN_SYSTEM_TEXT(key, english, spanish)
#define TAVRIN_SYSTEM_REFUSAL(errorNumber, english, spanish) {errorNumber, {#errorNumber, english, spanish}},
#include "TavrinCore/Strings/SystemTexts.def"
#undef TAVRIN_SYSTEM_TEXT
#undef TAVRIN_SYSTEM_REFUSAL
};

std::string inRunningLanguage(std::string_view english, std::string_view spanish) {
    return std::string(runningLanguage() == Language::spanish ? spanish : english);
}

}  // namespace

Language languageFor(const std::vector<std::string>& preferredLanguages) {
    if (preferredLanguages.empty()) return Language::english;
    std::string first = preferredLanguages.front();
    std::ranges::transform(first, first.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return first.starts_with("es") ? Language::spanish : Language::english;
}

Language runningLanguage() {
    static const Language language = languageFor(preferredLanguages());
    return language;
}

std::string strings::filledIn(std::string_view pattern, std::span<const std::string_view> names,
                              std::span<const std::string_view> values) {
    assert(names.size() == values.size());
    std::string text;
    while (true) {
        const std::size_t open = pattern.find('{');
        text += pattern.substr(0, open);
        if (open == std::string_view::npos) return text;
        const std::size_t close = pattern.find('}', open);
        const auto name = std::ranges::find(names, pattern.substr(open + 1, close - open - 1));
        text += values[static_cast<std::size_t>(name - names.begin())];
        pattern.remove_prefix(close + 1);
    }
}

const std::string& S::privacyPolicyURL() {
    static const std::string address = inRunningLanguage("https://tavrin.example/clean-privacy",  //
                                                         "https://tavrin.example/clean-privacidad");
    return address;
}

#define TAVRIN_MESSAGE(key, english, spanish)                                \
    const std::string& S::key() {                                            \
        static const std::string text = inRunningLanguage(english, spanish); \
        return text;                                                         \
    }
#include "TavrinCore/Strings/Messages.def"
#define TAVRIN_SYSTEM_TEXT TAVRIN_MESSAGE
#define TAVRIN_SYSTEM_REFUSAL(errorNumber, english, spanish)
#include "TavrinCore/Strings/SystemTexts.def"
#undef TAVRIN_SYSTEM_REFUSAL
#undef TAVRIN_SYSTEM_TEXT
#define TAVRIN_NAME TAVRIN_MESSAGE
#include "TavrinCore/Strings/NameTexts.def"
#undef TAVRIN_NAME
#define TAVRIN_WINDOW_TEXT TAVRIN_MESSAGE
#include "TavrinCore/Strings/WindowTexts.def"
#undef TAVRIN_WINDOW_TEXT
#undef TAVRIN_MESSAGE

std::string_view S::systemRefusal(int errorNumber) {
    const auto* refusal = std::ranges::find(kRefusals, errorNumber, &Refusal::errorNumber);
    return refusal == std::end(kRefusals) ? std::string_view() : refusal->sentence.in(runningLanguage());
}

std::span<const StaticMessage> S::staticMessages() {
    return kStaticMessages;
}

std::span<const FunctionMessageRow> S::functionMessages() {
    return kFunctionMessages;
}

std::span<const StaticMessage> S::systemTexts() {
    return kSystemTexts;
}

std::span<const StaticMessage> S::nameTexts() {
    return kNameTexts;
}

std::span<const StaticMessage> S::windowTexts() {
    return kWindowTexts;
}

}  // namespace tavrin
