#include "TavrinCore/Platform/Linux/DirectoryWalker.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <cerrno>

namespace tavrin {

void PlacedEntry::place(int folder, std::string_view name, FileType type, std::size_t depth, unsigned fields) {
    folder_ = folder;
    name_ = name;
    type_ = type;
    depth_ = depth;
    fields_ = fields;
    asked_ = Asked::no;
}

bool PlacedEntry::resolveUnknownType() {
    ask();
    if (asked_ == Asked::given) type_ = status_.type;
    return asked_ != Asked::vanished;
}

URL PlacedEntry::url() const {
    std::string path;
    path.reserve(folderPath_.size() + 1 + name_.size());
    path.append(folderPath_).append("/").append(name_);
    return URL::fromPath(path, type_ == FileType::directory);
}

const FileStatus* PlacedEntry::status() {
    if (asked_ == Asked::no) ask();
    return asked_ == Asked::given ? &status_ : nullptr;
}

void PlacedEntry::ask() {
    struct statx status;  // NOLINT(cppcoreguidelines-pro-type-member-init): the kernel fills it
    int result = -1;
    do {
        result = calls_.status(folder_, name_.data(), kStatxLook | AT_SYMLINK_NOFOLLOW, fields_, status);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        asked_ = errno == ENOENT ? Asked::vanished : Asked::refused;
        return;
    }
    asked_ = Asked::given;
    status_ = statusFrom(status, fields_);
}

}  // namespace tavrin
