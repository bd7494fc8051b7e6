#include "Support/PretendedFile.h"
#include "TavrinCore/Scanning/FileFingerprint.h"

#include <gtest/gtest.h>

#include <string>

namespace tavrin {
namespace {

using test::PretendedFile;

SHA256::Digest hashOf(const std::string& bytes) {
    SHA256 hash;
    hash.update({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    return hash.finish();
}

Fingerprint fingerprintOf(const PretendedFile& file) {
    return tavrin::fingerprintOf(*file.open());
}

TEST(FileFingerprint, ofAFileUpTo8192BytesIsTheHashOfTheFile) {
    for (const std::size_t size : {0U, 1U, 8'191U, 8'192U}) {
        const PretendedFile file{.bytes = std::string(size, 'x')};
        const Fingerprint fingerprint = fingerprintOf(file);
        EXPECT_EQ(fingerprint.digest, hashOf(file.bytes)) << size;
        EXPECT_TRUE(fingerprint.isWhole) << size;
        EXPECT_EQ(file.bytesRead, size);
    }
}

TEST(FileFingerprint, ofALargerFileIsTheHashOfItsFirst8192Bytes) {
    for (const std::size_t size : {8'193U, 1'000'000U}) {
        const PretendedFile file{.bytes = std::string(8'192, 'x') + std::string(size - 8'192, 'y')};
        const Fingerprint fingerprint = fingerprintOf(file);
        EXPECT_EQ(fingerprint.digest, hashOf(std::string(8'192, 'x'))) << size;
        EXPECT_FALSE(fingerprint.isWhole) << size;
        EXPECT_LE(file.bytesRead, 8'193U) << "no more is read than is needed";
    }
}

TEST(FileFingerprint, ofAFileThatCanNotBeReadIsThatOfNothing) {
    for (const std::size_t failsFrom : {0U, 5'000U}) {
        const Fingerprint fingerprint = fingerprintOf({.bytes = std::string(9'000, 'x'), .failsFrom = failsFrom});
        EXPECT_EQ(hexadecimal(fingerprint.digest), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
        EXPECT_FALSE(fingerprint.isWhole) << "the rest of it was never seen";
    }
}

TEST(FileFingerprint, doesNotDependOnTheSizeOfReads) {
    const std::string bytes(8'500, 'x');
    EXPECT_EQ(fingerprintOf({.bytes = bytes, .mostPerRead = 100}).digest, fingerprintOf({.bytes = bytes}).digest);
}

}  // namespace
}  // namespace tavrin
