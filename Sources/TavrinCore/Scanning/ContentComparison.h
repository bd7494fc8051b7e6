// Which of some files hold the same bytes, and the SHA-256 of those bytes.
//
// The files are read side by side, a chunk of each at a time. Most that differ do so in the first chunk, which is a
// small one, so that many of them can be held and compared with each other. From there on one file of each set is
// hashed and the others are compared with it in memory, which costs a fraction of a hash and is stronger than one.
// Files that part ways go on in sets of their own, and a file that nobody is equal to any more isn't read any further.
// Memory and open files are bounded for any number of files of any size, and no byte is read twice as long as their
// beginnings are no more than can be held.
#pragma once

#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Scanning/SHA256.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace tavrin {

/// Two files or more, in the order in which they were given.
struct EqualFiles {
    SHA256::Digest hash;
    std::vector<std::uint32_t> files;
};

/// Not shared between threads. Keeps its buffers from one call to the next.
class ContentComparison {
  public:
    /// Nil when the file can't be opened, or isn't the file it was. May be asked more than once for the same file.
    using Open = std::function<std::unique_ptr<FileReader>(std::uint32_t file)>;

    /// Files that stay open between their chunks; of more than these each is opened anew for each chunk.
    static constexpr std::size_t kMostOpen = 64;
    /// What is read of each at first.
    static constexpr std::size_t kFirstChunk = 8'192;

    /// Both must outlive this. `isCancelled` is polled before each chunk.
    ContentComparison(const Open& open, const CancellationCallback& isCancelled);

    /// The files that have an equal one among `files`. What can't be opened, or grows while it is read, is left out.
    /// What can't be read to its end counts with what was read. Throws ScanError::cancelled.
    [[nodiscard]] std::vector<EqualFiles> equalFiles(std::span<const std::uint32_t> files);
    /// Whether any of the last files had to come from the disk.
    [[nodiscard]] bool hadToWait() const { return hadToWait_; }

  private:
    struct Candidate {
        std::uint32_t file = 0;
        std::unique_ptr<FileReader> reader = nullptr;
        /// Bytes that it had when it was opened first.
        std::int64_t length = -1;
    };
    /// Candidates that begin alike, and their first chunk.
    struct Beginning {
        explicit Beginning(std::span<const unsigned char> chunk) : bytes(chunk) {}

        std::span<const unsigned char> bytes;
        std::vector<Candidate> candidates;
    };
    /// Candidates that are equal so far.
    struct Set {
        std::vector<Candidate> candidates;
        SHA256 hash;
        std::uint64_t offset = 0;
    };
    struct DigestHash {
        std::size_t operator()(const SHA256::Digest& digest) const;
    };
    /// One that left its set. As long as it is the only one, there is no need to hash what was read.
    struct Loner {
        Candidate candidate;
        std::span<const unsigned char> bytes;
    };
    /// Candidates that left their set, by the hash of all that was read of them.
    struct Parted {
        Set set;
        bool isAtEnd;
    };
    using PartedSets = std::unordered_map<SHA256::Digest, Parted, DigestHash>;

    /// Reads their first chunks. Gives back those that there was no room for.
    [[nodiscard]] std::vector<std::uint32_t> begin(std::span<const std::uint32_t> files);
    void goOnFrom(Beginning& beginning);
    void readOn(Set set);
    /// Compares one chunk of each. True at the end of the files.
    bool step(Set& set);
    void part(Candidate candidate, const Set& from, std::span<const unsigned char> bytes, PartedSets& parted);
    void take(Set& set);
    [[nodiscard]] bool makeReady(Candidate& candidate);
    /// The chunk at `offset`; shorter than the buffer at the end only. Nil when the candidate is out of the game.
    [[nodiscard]] std::optional<std::size_t> read(Candidate& candidate, std::uint64_t offset,
                                                  std::span<unsigned char> buffer);
    void letGo(Candidate& candidate);

    const Open& open_;
    const CancellationCallback& isCancelled_;
    std::unique_ptr<unsigned char[]> firstChunks_;
    std::unique_ptr<unsigned char[]> first_;
    std::unique_ptr<unsigned char[]> other_;
    std::unique_ptr<unsigned char[]> spare_;
    std::size_t openCount_ = 0;
    bool hadToWait_ = false;
    std::vector<Set> waiting_;
    std::vector<EqualFiles> found_;
};

}  // namespace tavrin
