// The hash of a file's first bytes, which tells most files apart.
#pragma once

#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Scanning/SHA256.h"

#include <cstddef>

namespace tavrin {

inline constexpr std::size_t kFingerprintPrefix = 8192;

struct Fingerprint {
    SHA256::Digest digest{};
    /// The prefix is all of the file, so its hash is the hash of the file.
    bool isWhole = false;
};

/// Reads from the beginning. A file that can't be read counts as empty, and not as whole.
[[nodiscard]] Fingerprint fingerprintOf(FileReader& reader);

}  // namespace tavrin
