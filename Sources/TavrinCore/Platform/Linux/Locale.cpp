// The environment carries both: LANGUAGE, LC_ALL, LC_MESSAGES, LC_NUMERIC, LC_TIME, LANG (locale(7), gettext(3)). No
// locale has to be installed for it.
#include "TavrinCore/Platform/Locale.h"

#include <cstdlib>
#include <string_view>

namespace tavrin {
namespace {

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): the program never writes its environment
    return value != nullptr ? value : std::string_view();
}

/// Who sets "C" wants the words untranslated, and gettext then looks no further, not even at LANGUAGE. "C.UTF-8" only
/// says how characters are written.
bool wantsNoTranslation(std::string_view name) {
    return name == "C" || name == "POSIX";
}

/// "es_ES.UTF-8@euro" is "es-ES". Empty for the locales that name no language.
std::string tagFromLocaleName(std::string_view name) {
    std::string tag(name.substr(0, name.find_first_of(".@")));
    if (tag == "C" || tag == "POSIX") return {};
    for (char& c : tag) {
        if (c == '_') c = '-';
    }
    return tag;
}

/// The first of these that is set, as POSIX orders them for one category.
std::string_view localeName(const char* category) {
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        if (const std::string_view value = variable(name); !value.empty()) return value;
    }
    return {};
}

/// "es-ES" has "ES"; "es", "zh-Hant" and "es-419" have none that counts here.
std::string regionOfTag(std::string_view tag) {
    const std::size_t dash = tag.rfind('-');
    if (dash == std::string_view::npos || tag.size() - dash != 3) return {};
    std::string region(tag.substr(dash + 1));
    for (char& c : region) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return region;
}

}  // namespace

std::vector<std::string> preferredLanguages() {
    std::vector<std::string> tags;
    const std::string_view locale = localeName("LC_MESSAGES");
    if (wantsNoTranslation(locale)) return tags;
    const auto add = [&tags](std::string_view name) {
        if (std::string tag = tagFromLocaleName(name); !tag.empty()) tags.push_back(std::move(tag));
    };
    for (std::string_view rest = variable("LANGUAGE"); !rest.empty();) {
        const std::size_t colon = rest.find(':');
        if (wantsNoTranslation(rest.substr(0, colon))) return tags;
        add(rest.substr(0, colon));
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    add(locale);
    return tags;
}

std::string preferredRegion(RegionOf what) {
    const std::string_view locale = localeName(what == RegionOf::dates ? "LC_TIME" : "LC_NUMERIC");
    if (std::string region = regionOfTag(tagFromLocaleName(locale)); !region.empty()) return region;
    const std::vector<std::string> languages = preferredLanguages();
    return languages.empty() ? std::string() : regionOfTag(languages.front());
}

}  // namespace tavrin
