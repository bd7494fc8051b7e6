// SHA-256 by OpenSSL's EVP, which uses the processor's own instructions for it where there are any.
#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <span>

namespace tavrin {
namespace {

class SHA256 {
  public:
    SHA256() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
        if (context_ == nullptr || EVP_DigestInit_ex(context_.get(), algorithm(), nullptr) != 1) throw std::bad_alloc();
    }

    void update(std::span<const unsigned char> bytes) {
        (void)EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size());
    }

    [[nodiscard]] std::string finish() {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
        unsigned length = 0;
        (void)EVP_DigestFinal_ex(context_.get(), digest.data(), &length);
        constexpr std::string_view digits = "0123456789abcdef";
        std::string text;
        for (const unsigned byte : std::span(digest).first(length)) {
            text.push_back(digits[byte >> 4U]);
            text.push_back(digits[byte & 0xFU]);
        }
        return text;
    }

  private:
    /// Looked up once: it costs more than the hash of a small file.
    static const EVP_MD* algorithm() {
        static const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> sha256(EVP_MD_fetch(nullptr, "SHA256", nullptr),
                                                                            EVP_MD_free);
        return sha256.get();
    }

    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_;
};

}  // namespace

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
        if (!count) return SHA256().finish();
        if (*count == 0) break;
        hash.update(piece.first(*count));
        prefix -= *count;
    }
    return hash.finish();
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
        if (!count || *count == 0) return hash.finish();
        hash.update({buffer.get(), *count});
    }
}

}  // namespace tavrin
