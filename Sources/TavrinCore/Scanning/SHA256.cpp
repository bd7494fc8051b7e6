// OpenSSL's EVP uses the processor's own instructions for SHA-256 where there are any.
#include "TavrinCore/Scanning/SHA256.h"

#include <openssl/evp.h>

#include <new>
#include <string_view>

namespace tavrin {
namespace {

/// Looked up once: it costs more than the hash of a small file.
const EVP_MD* algorithm() {
    static const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> sha256(EVP_MD_fetch(nullptr, "SHA256", nullptr),
                                                                        EVP_MD_free);
    return sha256.get();
}

}  // namespace

void SHA256::Free::operator()(evp_md_ctx_st* context) const {
    EVP_MD_CTX_free(context);
}

SHA256::SHA256() : context_(EVP_MD_CTX_new()) {
    if (context_ == nullptr || EVP_DigestInit_ex(context_.get(), algorithm(), nullptr) != 1) throw std::bad_alloc();
}

SHA256::SHA256(const SHA256& other) : context_(EVP_MD_CTX_new()) {
    if (context_ == nullptr || EVP_MD_CTX_copy_ex(context_.get(), other.context_.get()) != 1) throw std::bad_alloc();
}

void SHA256::update(std::span<const unsigned char> bytes) {
    (void)EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size());
}

SHA256::Digest SHA256::finish() {
    Digest digest{};
    (void)EVP_DigestFinal_ex(context_.get(), digest.data(), nullptr);
    return digest;
}

std::string hexadecimal(const SHA256::Digest& digest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * digest.size());
    for (const unsigned byte : digest) {
        text.push_back(digits[byte >> 4U]);
        text.push_back(digits[byte & 0xFU]);
    }
    return text;
}

}  // namespace tavrin
