// Dates as text for people, in the running language, the user's region and the user's time zone. What looks like a
// plain blank inside may be another kind of blank, as the region has it.
//
// Safe from any thread. The user's settings are read once, like the language of the words.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Strings/Language.h"

#include <string>

namespace tavrin {

/// The day, not too long: "Jan 2, 2024", "2 ene 2024".
[[nodiscard]] std::string dateText(Date date);
/// The same with the time of day, without seconds: "Jan 2, 2024, 3:04 PM", "2 ene 2024, 15:04".
[[nodiscard]] std::string dateAndTimeText(Date date);

/// What the text depends on.
struct DateSettings {
    Language language = Language::english;
    /// An ISO 3166 code ("ES"); empty for the language's own.
    std::string region;
    /// A name of the time zone database ("Europe/Madrid"); empty for the system's.
    std::string timeZone;
};

// The same for any settings, so that every one of them can be tested. Slow: each call looks the rules up anew.

[[nodiscard]] std::string dateText(Date date, const DateSettings& settings);
[[nodiscard]] std::string dateAndTimeText(Date date, const DateSettings& settings);

}  // namespace tavrin
