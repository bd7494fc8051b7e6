#include "TavrinCore/Models/URL.h"

#include "TavrinCore/Models/PercentEncoding.h"

#include <unicode/unistr.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace tavrin {
namespace {

constexpr std::string_view kFileScheme = "file://";

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

/// Control characters, and what turns the direction of text: embeddings, overrides and isolates (UAX #9, section 2).
/// The plain marks only settle which way they lean themselves.
bool isUnsafe(UChar32 c) {
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool turnsText = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return control || turnsText;
}

/// Lines end at LF, CR and NEL, which are control characters, and at two that aren't.
bool isUnsafeInLine(UChar32 c) {
    return isUnsafe(c) || c == 0x2028 || c == 0x2029;
}

bool isUnsafeInText(UChar32 c) {
    return isUnsafe(c) && c != u'\n' && c != u'\t';
}

icu::UnicodeString decoded(std::string_view bytes) {
    return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())});
}

/// With U+FFFD for what must go. All of that lies in the basic plane, so each is one code unit.
std::string replaced(icu::UnicodeString text, bool (*mustGo)(UChar32)) {
    constexpr char16_t replacement = 0xFFFD;
    for (std::int32_t i = 0; i < text.length(); ++i) {
        if (mustGo(text.charAt(i))) text.setCharAt(i, replacement);
    }
    std::string result;
    text.toUTF8String(result);
    return result;
}

}  // namespace

URL::URL() : path_("/"), directory_(true) {}

URL URL::fromPath(std::string_view path) {
    return fromPath(path, path.ends_with('/'));
}

URL URL::fromPath(std::string_view path, bool isDirectory) {
    if (path.find('\0') != std::string_view::npos) throw std::invalid_argument("a path with a zero byte");
    const std::string_view trimmed = withoutTrailingSlashes(path);
    if (trimmed.starts_with('/')) return {std::string(trimmed), isDirectory || trimmed == "/"};
    const URL current = fromPath(std::filesystem::current_path().native(), true);
    return trimmed.empty() ? current : current.appendingPathComponent(trimmed, isDirectory);
}

std::optional<URL> URL::fromAbsoluteString(std::string_view text) {
    if (!text.starts_with(kFileScheme)) return std::nullopt;
    text.remove_prefix(kFileScheme.size());
    constexpr std::string_view localHost = "localhost/";
    if (text.starts_with(localHost)) text.remove_prefix(localHost.size() - 1);
    if (!text.starts_with('/')) return std::nullopt;
    if (text.find('?') != std::string_view::npos || text.find('#') != std::string_view::npos) return std::nullopt;
    const std::optional<std::string> path = percentDecoded(text);
    if (!path) return std::nullopt;
    return fromPath(*path);
}

std::string_view URL::lastPathComponent() const {
    const std::string_view path = path_;
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

std::string_view URL::pathExtension() const {
    const std::string_view name = lastPathComponent();
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name == "..") return {};
    return name.substr(dot + 1);
}

std::vector<std::string_view> URL::pathComponents() const {
    const std::string_view path = path_;
    std::vector<std::string_view> components{path.substr(0, 1)};
    for (std::size_t begin = 1; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (end > begin) components.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return components;
}

URL URL::appendingPathComponent(std::string_view component, bool isDirectory) const {
    if (component.find('\0') != std::string_view::npos) throw std::invalid_argument("a path with a zero byte");
    const bool directory = isDirectory || component.ends_with('/');
    while (component.starts_with('/'))
        component.remove_prefix(1);
    component = withoutTrailingSlashes(component);
    if (component.empty()) return {path_, directory_ || directory};
    std::string path;
    path.reserve(path_.size() + 1 + component.size());
    path.append(path_);
    if (path_ != "/") path.push_back('/');
    path.append(component);
    return {std::move(path), directory};
}

URL URL::deletingLastPathComponent() const {
    const std::string_view path = path_;
    const std::string_view parent = withoutTrailingSlashes(path.substr(0, path.rfind('/') + 1));
    return {std::string(parent), true};
}

URL URL::standardizedFileURL() const {
    std::vector<std::string_view> kept;
    for (std::string_view component : pathComponents()) {
        if (component == "/" || component == ".") continue;
        if (component != "..") {
            kept.push_back(component);
        } else if (!kept.empty()) {
            kept.pop_back();
        }
    }
    if (kept.empty()) return {};
    std::string path;
    path.reserve(path_.size());
    for (std::string_view component : kept)
        path.append("/").append(component);
    return {std::move(path), directory_};
}

URL URL::resolvingSymlinksInPath() const {
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(path_, error);
    if (error) return standardizedFileURL();
    return fromPath(resolved.native(), directory_).standardizedFileURL();
}

std::string URL::absoluteString() const {
    std::string text(kFileScheme);
    text.append(percentEncoded(path_));
    if (directory_ && path_ != "/") text.push_back('/');
    return text;
}

std::string displayText(std::string_view bytes) {
    std::string text;
    decoded(bytes).toUTF8String(text);
    return text;
}

std::string lineText(std::string_view bytes) {
    return replaced(decoded(bytes), isUnsafeInLine);
}

std::string safeText(std::string_view bytes) {
    icu::UnicodeString text = decoded(bytes);
    text.findAndReplace(icu::UnicodeString(u"\r\n"), icu::UnicodeString(u"\n"));
    return replaced(std::move(text), isUnsafeInText);
}

}  // namespace tavrin
