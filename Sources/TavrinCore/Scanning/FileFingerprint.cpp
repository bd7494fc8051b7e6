#include "TavrinCore/Scanning/FileFingerprint.h"

#include <algorithm>
#include <array>
#include <span>

namespace tavrin {

Fingerprint fingerprintOf(FileReader& reader) {
    // One byte more than the prefix tells whether there is more.
    std::array<unsigned char, kFingerprintPrefix + 1> bytes;
    std::size_t count = 0;
    bool isAtEnd = false;
    while (count < bytes.size() && !isAtEnd) {
        const std::optional<std::size_t> got = reader.read(std::span(bytes).subspan(count));
        if (!got) return {.digest = SHA256().finish()};
        isAtEnd = *got == 0;
        count += *got;
    }
    SHA256 hash;
    hash.update(std::span(bytes).first(std::min(count, kFingerprintPrefix)));
    return {.digest = hash.finish(), .isWhole = isAtEnd};
}

}  // namespace tavrin
