// Every word that a person reads, in both languages. The tables are in Strings/; this is how they are read.
//
// The language is settled once per run, when the first message is touched: Spanish when the system's first preferred
// language begins with "es", English for everything else. Each static message is one stored constant from then on;
// a message with parameters builds its text on each call.
//
// Safe from any thread, also the first time.
#pragma once

#include "TavrinCore/Strings/FunctionMessage.h"
#include "TavrinCore/Strings/StaticMessage.h"

#include <span>
#include <string>
#include <string_view>

namespace tavrin {

class S {
  public:
    S() = delete;

    [[nodiscard]] static bool useEnglish() { return runningLanguage() == Language::english; }

    /// The same in every language.
    static constexpr std::string_view appName = "Tavrin Clean";

    /// The web page with the privacy policy, one per language.
    [[nodiscard]] static const std::string& privacyPolicyURL();

#define TAVRIN_MESSAGE(key, english, spanish) [[nodiscard]] static const std::string& key();
#include "TavrinCore/Strings/Messages.def"
#undef TAVRIN_MESSAGE

    using Count = strings::Count;
    using Text = strings::Text;
#define TAVRIN_FUNCTION_MESSAGE(key, parameters, ...) \
    static constexpr FunctionMessage<std::string parameters> key{#key, #parameters, __VA_ARGS__};
#include "TavrinCore/Strings/FunctionMessages.def"
#undef TAVRIN_FUNCTION_MESSAGE

    /// What the operating system says by itself elsewhere: the words of a byte count.
#define TAVRIN_SYSTEM_TEXT(key, english, spanish) [[nodiscard]] static const std::string& key();
#define TAVRIN_SYSTEM_REFUSAL(errorNumber, english, spanish)
#include "TavrinCore/Strings/SystemTexts.def"
#undef TAVRIN_SYSTEM_TEXT
#undef TAVRIN_SYSTEM_REFUSAL

    /// What scanners call other programs' things.
#define TAVRIN_NAME(key, english, spanish) [[nodiscard]] static const std::string& key();
#include "TavrinCore/Strings/NameTexts.def"
#undef TAVRIN_NAME

    /// Words of the window itself, in a table of their own.
#define TAVRIN_WINDOW_TEXT(key, english, spanish) [[nodiscard]] static const std::string& key();
#include "TavrinCore/Strings/WindowTexts.def"
#undef TAVRIN_WINDOW_TEXT

    /// Why the system refused something, one sentence for an error number of POSIX. Empty for one that has none here.
    [[nodiscard]] static std::string_view systemRefusal(int errorNumber);

    /// All rows of the tables, in their order.
    [[nodiscard]] static std::span<const StaticMessage> staticMessages();
    [[nodiscard]] static std::span<const FunctionMessageRow> functionMessages();
    /// The system's texts, in a table of their own. The key of a refusal is the name of its error number.
    [[nodiscard]] static std::span<const StaticMessage> systemTexts();
    /// Names, likewise.
    [[nodiscard]] static std::span<const StaticMessage> nameTexts();
    /// The window's own words, likewise.
    [[nodiscard]] static std::span<const StaticMessage> windowTexts();
};

}  // namespace tavrin
