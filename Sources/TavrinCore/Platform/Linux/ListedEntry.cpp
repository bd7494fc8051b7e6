#include "TavrinCore/Platform/Linux/ListedEntry.h"

#include <dirent.h>

#include <cstring>

namespace tavrin {
namespace {

// struct linux_dirent64 of getdents64(2); glibc's dirent64 is the same.
constexpr std::size_t kNextAt = offsetof(dirent64, d_off);
constexpr std::size_t kLengthAt = offsetof(dirent64, d_reclen);
constexpr std::size_t kTypeAt = offsetof(dirent64, d_type);
constexpr std::size_t kNameAt = offsetof(dirent64, d_name);

template <class T>
T valueAt(std::string_view buffer, std::size_t at) {
    T value{};
    std::memcpy(&value, buffer.data() + at, sizeof value);
    return value;
}

FileType typeFrom(unsigned char listed) {
    switch (listed) {
        case DT_REG:
            return FileType::regular;
        case DT_DIR:
            return FileType::directory;
        case DT_LNK:
            return FileType::symbolicLink;
        case DT_FIFO:
            return FileType::fifo;
        case DT_SOCK:
            return FileType::socket;
        case DT_CHR:
            return FileType::characterDevice;
        case DT_BLK:
            return FileType::blockDevice;
        default:
            return FileType::unknown;
    }
}

}  // namespace

std::optional<ListedEntry> readListedEntry(std::string_view buffer) {
    if (buffer.size() <= kNameAt) return std::nullopt;
    const std::size_t length = valueAt<std::uint16_t>(buffer, kLengthAt);
    if (length <= kNameAt || length > buffer.size()) return std::nullopt;
    const std::string_view field = buffer.substr(kNameAt, length - kNameAt);
    const std::string_view name = field.substr(0, field.find('\0'));
    if (name.empty() || name.size() == field.size() || name.find('/') != std::string_view::npos) return std::nullopt;
    return ListedEntry{.name = name,
                       .type = typeFrom(valueAt<unsigned char>(buffer, kTypeAt)),
                       .next = valueAt<std::int64_t>(buffer, kNextAt),
                       .length = length};
}

}  // namespace tavrin
