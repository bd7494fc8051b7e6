// SHA-256 (FIPS 180-4), piece by piece.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct evp_md_ctx_st;

namespace tavrin {

class SHA256 {
  public:
    using Digest = std::array<unsigned char, 32>;

    /// Throws std::bad_alloc when the library has no memory for it.
    SHA256();
    /// A copy goes on from where the other one stands.
    SHA256(const SHA256& other);
    SHA256(SHA256&&) noexcept = default;
    SHA256& operator=(SHA256&&) noexcept = default;
    SHA256& operator=(const SHA256&) = delete;
    ~SHA256() = default;

    void update(std::span<const unsigned char> bytes);
    /// Nothing may be fed to it afterwards.
    [[nodiscard]] Digest finish();

  private:
    struct Free {
        void operator()(evp_md_ctx_st* context) const;
    };
    std::unique_ptr<evp_md_ctx_st, Free> context_;
};

/// 64 characters, lower case.
[[nodiscard]] std::string hexadecimal(const SHA256::Digest& digest);

}  // namespace tavrin
