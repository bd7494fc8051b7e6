#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/SHA256.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

namespace tavrin {
std::optional<std::string> FileSystemUtils::quickFingerprint(const URL& file, std::size_t prefix) {
    const std::unique_ptr<FileReader> reader = FileReader::open(file, FileReader::Expect::beginning);
    if (reader == nullptr) return std::nullopt;
    // However large the prefix, it is held in memory piece by piece.
    std::array<unsigned char, std::size_t{16} * 1024> buffer;
    SHA256 hash;
    while (prefix > 0) {
        const std::span piece = std::span(buffer).first(std::min(prefix, buffer.size()));
        const std::optional<std::size_t> count = reader->read(piece);
        // The whole is one read to the caller: one that fails gives nothing.
        if (!count) return hexadecimal(SHA256().finish());
        if (*count == 0) break;
        hash.update(piece.first(*count));
        prefix -= *count;
    }
    return hexadecimal(hash.finish());
}

std::optional<std::string> FileSystemUtils::fullHash(const URL& file, std::size_t chunkSize,
                                                     const CancellationCallback& isCancelled) {
    const std::unique_ptr<FileReader> reader = FileReader::open(file, FileReader::Expect::whole);
    if (reader == nullptr) return std::nullopt;
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[chunkSize]);
    SHA256 hash;
    for (;;) {
        if (isCancelled()) return std::nullopt;
        const std::optional<std::size_t> count = reader->read({buffer.get(), chunkSize});
        if (!count || *count == 0) return hexadecimal(hash.finish());
        hash.update({buffer.get(), *count});
    }
}

}  // namespace tavrin
