// What hashing a large warm file costs, beside a loop that only reads and feeds OpenSSL's SHA-256.
//
//   HashBenchmark [FOLDER]   makes its file in FOLDER (the current one) and keeps it
#include "Measuring.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;

constexpr std::size_t kChunk = 1'048'576;
constexpr int kMegabytes = 512;

void makeFile(const fs::path& path) {
    std::error_code error;
    if (fs::file_size(path, error) == kChunk * kMegabytes) return;
    std::mt19937_64 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    std::vector<std::uint64_t> chunk(kChunk / sizeof(std::uint64_t));
    std::ofstream stream(path, std::ios::binary);
    for (int i = 0; i < kMegabytes; ++i) {
        for (std::uint64_t& word : chunk)
            word = random();
        stream.write(reinterpret_cast<const char*>(chunk.data()), kChunk);
    }
}

void readAndFeed(const fs::path& path) {
    std::vector<unsigned char> buffer(kChunk);
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    EVP_DigestInit_ex(context, EVP_sha256(), nullptr);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    for (ssize_t count = 0; (count = ::read(file, buffer.data(), buffer.size())) > 0;)
        EVP_DigestUpdate(context, buffer.data(), static_cast<std::size_t>(count));
    ::close(file);
    unsigned char digest[EVP_MAX_MD_SIZE];
    EVP_DigestFinal_ex(context, digest, nullptr);
    EVP_MD_CTX_free(context);
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path path = fs::absolute(argc > 1 ? argv[1] : ".") / "large-file";
    makeFile(path);
    const URL file = URL::fromPath(path.native());
    const std::vector<Cost> least = leastCosts(10, {[&] { return costOf([&] { readAndFeed(path); }); },
                                                    [&] {
                                                        return costOf([&] {
                                                            if (!FileSystemUtils::fullHash(file, kChunk))
                                                                throw std::runtime_error("no hash");
                                                        });
                                                    }});
    report("read and feed SHA-256", kMegabytes / least[0].clock, "MiB/s");
    report("fullHash", kMegabytes / least[1].clock, "MiB/s");
    report("fullHash / read and feed, clock", least[1].clock / least[0].clock, "ratio", "<= 1.03");
    report("fullHash / read and feed, processor", least[1].processor / least[0].processor, "ratio", "<= 1.03");
    return 0;
}
