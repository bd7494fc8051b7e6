#include "TavrinCore/Platform/Linux/TrashName.h"

#include "TavrinCore/Models/UUID.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <climits>

namespace tavrin {
namespace {

constexpr std::size_t kLongestName = NAME_MAX - TrashInfo::suffix.size();
/// What is longer than this after a dot is no extension that anybody knows.
constexpr std::size_t kLongestExtension = 24;

/// With its dot; empty where there is none worth keeping.
std::string_view extensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name.size() - dot > kLongestExtension) return {};
    return name.substr(dot);
}

/// Never between the bytes of one UTF-8 character; bytes that are no UTF-8 are cut anywhere.
std::string_view cutTo(std::string_view text, std::size_t length) {
    if (text.size() <= length) return text;
    std::size_t end = length;
    while (end > 0 && length - end < 3 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return text.substr(0, end);
}

std::string joined(std::string_view name, std::string_view middle) {
    const std::string_view extension = extensionOf(name);
    const std::string_view stem = name.substr(0, name.size() - extension.size());
    std::string result(cutTo(stem, kLongestName - extension.size() - middle.size()));
    return result.append(middle).append(extension);
}

std::string randomDigits() {
    return UUID::random().uuidString().substr(0, 8);
}

}  // namespace

std::string trashName(std::string_view name) {
    return joined(name, {});
}

std::string uncommonTrashName(std::string_view name) {
    return joined(name, " " + randomDigits());
}

std::string shortTrashName() {
    return randomDigits();
}

}  // namespace tavrin
