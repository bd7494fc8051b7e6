#include "DuplicatesFloor.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace tavrin::benchmarks {
namespace {

using Digest = std::array<unsigned char, 32>;

Digest hashOf(const std::string& path, std::size_t most, std::vector<unsigned char>& buffer) {
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    EVP_DigestInit_ex(context, EVP_sha256(), nullptr);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    while (most > 0) {
        const ssize_t count = ::read(file, buffer.data(), std::min(most, buffer.size()));
        if (count <= 0) break;
        EVP_DigestUpdate(context, buffer.data(), static_cast<std::size_t>(count));
        most -= static_cast<std::size_t>(count);
    }
    ::close(file);
    Digest digest{};
    EVP_DigestFinal_ex(context, digest.data(), nullptr);
    EVP_MD_CTX_free(context);
    return digest;
}

std::map<Digest, std::vector<std::string>> byHash(const std::vector<std::string>& paths, std::size_t most,
                                                  std::vector<unsigned char>& buffer) {
    std::map<Digest, std::vector<std::string>> groups;
    for (const std::string& path : paths)
        groups[hashOf(path, most, buffer)].push_back(path);
    return groups;
}

}  // namespace

std::size_t plainFunnel(const std::string& folder) {
    std::map<long, std::vector<std::string>> bySize;
    std::set<std::pair<unsigned long, unsigned long>> seen;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        struct stat status {};
        if (::lstat(entry.path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (seen.insert({status.st_dev, status.st_ino}).second) bySize[status.st_blocks].push_back(entry.path());
    }
    std::vector<unsigned char> buffer(1'048'576);
    std::size_t copies = 0;
    for (const auto& [size, paths] : bySize) {
        if (paths.size() < 2) continue;
        for (const auto& [fingerprint, alike] : byHash(paths, 8192, buffer)) {
            if (alike.size() < 2) continue;
            for (const auto& [digest, equal] : byHash(alike, SIZE_MAX, buffer))
                copies += equal.size() - 1;
        }
    }
    return copies;
}

}  // namespace tavrin::benchmarks
