#include "TavrinCore/Scanning/FileIndex.h"

#include <algorithm>
#include <cstring>

namespace tavrin {
namespace {

bool isInside(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

}  // namespace

TextArena::Position TextArena::add(std::string_view text) {
    const std::size_t wanted = text.size() + 1;
    if (blocks_.empty() || used_ + wanted > kBlockBytes) {
        // A text that is longer than a block has one of its own, which is full then.
        blocks_.emplace_back(new char[std::max(kBlockBytes, wanted)]);
        used_ = 0;
    }
    char* place = blocks_.back().get() + used_;
    std::memcpy(place, text.data(), text.size());
    place[text.size()] = '\0';
    const Position position = Position{blocks_.size() - 1} << kBlockBits | used_;
    used_ += wanted;
    return position;
}

std::string_view TextArena::at(Position position) const {
    return blocks_[position >> kBlockBits].get() + (position & (kBlockBytes - 1));
}

void FileIndex::add(const URL& file, const FileStatus& status) {
    const std::string_view path = file.path();
    const std::size_t slash = path.rfind('/');
    files_.push_back({.size = status.measure(),
                      .length = status.size.value_or(-1),
                      .modified = status.modified.value_or(Date::distantFuture),
                      .inode = status.identifier ? status.identifier->inode : 0,
                      .name = texts_.add(path.substr(slash + 1)),
                      .folder = folderOf(path.substr(0, slash)),
                      .device = status.identifier ? deviceNumber(status.identifier->device) : kNone});
}

std::uint32_t FileIndex::folderOf(std::string_view path) {
    while (!openFolders_.empty() && !isInside(path, openPath_)) {
        openFolders_.pop_back();
        openPath_.resize(openFolders_.empty() ? 0 : openFolders_.back().pathLength);
    }
    if (!openFolders_.empty() && path.size() == openPath_.size()) return openFolders_.back().number;
    const auto number = static_cast<std::uint32_t>(folders_.size());
    const bool isTop = openFolders_.empty();
    folders_.push_back({.path = texts_.add(isTop ? path : path.substr(openPath_.size() + 1)),
                        .parent = isTop ? kNone : openFolders_.back().number});
    openPath_ = path;
    openFolders_.push_back({.number = number, .pathLength = path.size()});
    return number;
}

std::uint32_t FileIndex::deviceNumber(std::uint64_t device) {
    const auto found = std::ranges::find(devices_, device);
    const auto number = static_cast<std::uint32_t>(found - devices_.begin());
    if (found == devices_.end()) devices_.push_back(device);
    return number;
}

URL FileIndex::url(Number file) const {
    std::vector<std::string_view> parts{name(file)};
    for (std::uint32_t folder = files_[file].folder; folder != kNone; folder = folders_[folder].parent)
        parts.push_back(texts_.at(folders_[folder].path));
    std::string path(parts.back());
    for (auto part = parts.rbegin() + 1; part != parts.rend(); ++part)
        path.append("/").append(*part);
    return URL::fromPath(path, false);
}

std::optional<std::int64_t> FileIndex::length(Number file) const {
    return files_[file].length >= 0 ? std::optional(files_[file].length) : std::nullopt;
}

std::optional<FileIdentifier> FileIndex::identifier(Number file) const {
    if (files_[file].device == kNone) return std::nullopt;
    return FileIdentifier{.device = devices_[files_[file].device], .inode = files_[file].inode};
}

}  // namespace tavrin
