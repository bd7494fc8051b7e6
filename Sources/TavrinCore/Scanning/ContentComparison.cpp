#include "TavrinCore/Scanning/ContentComparison.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace tavrin {
namespace {

/// Two of them fit into a processor's second cache, so that bytes are compared and hashed where they were just put.
constexpr std::size_t kChunk = std::size_t{256} * 1024;
/// Files that stay open between their chunks; of more than these each is opened anew for each chunk.
constexpr std::size_t kMostOpen = 64;

}  // namespace

std::size_t ContentComparison::DigestHash::operator()(const SHA256::Digest& digest) const {
    std::size_t hash = 0;
    std::memcpy(&hash, digest.data(), sizeof hash);
    return hash;
}

ContentComparison::ContentComparison(const Open& open, const CancellationCallback& isCancelled)
    : open_(open), isCancelled_(isCancelled), first_(new unsigned char[kChunk]), other_(new unsigned char[kChunk]) {}

std::vector<EqualFiles> ContentComparison::equalFiles(std::span<const std::uint32_t> files) {
    found_.clear();
    waiting_.clear();
    openCount_ = 0;
    Set all;
    for (const std::uint32_t file : files)
        all.candidates.push_back({.file = file});
    waiting_.push_back(std::move(all));
    while (!waiting_.empty()) {
        Set set = std::move(waiting_.back());
        waiting_.pop_back();
        readOn(std::move(set));
    }
    return std::move(found_);
}

void ContentComparison::readOn(Set set) {
    while (set.candidates.size() > 1) {
        if (!step(set)) continue;
        take(set);
        return;
    }
    for (Candidate& candidate : set.candidates)
        letGo(candidate);
}

bool ContentComparison::step(Set& set) {
    std::vector<Candidate> equal;
    std::size_t count = 0;
    PartedSets parted;
    for (std::size_t i = 0; i < set.candidates.size(); ++i) {
        if (isCancelled_()) throw ScanError::cancelled();
        Candidate& candidate = set.candidates[i];
        unsigned char* buffer = equal.empty() ? first_.get() : other_.get();
        const std::optional<std::size_t> got = read(candidate, set.offset, {buffer, kChunk});
        if (!got) {
            letGo(candidate);
            continue;
        }
        // While this one is compared or hashed, the system fetches the next.
        if (*got == kChunk && i + 1 < set.candidates.size() && makeReady(set.candidates[i + 1]))
            set.candidates[i + 1].reader->prefetch(set.offset, kChunk);
        if (equal.empty()) count = *got;
        if (*got == count && (equal.empty() || std::memcmp(first_.get(), buffer, count) == 0)) {
            if (openCount_ > kMostOpen) letGo(candidate);
            equal.push_back(std::move(candidate));
        } else {
            part(std::move(candidate), set, {buffer, *got}, parted);
        }
    }
    set.candidates = std::move(equal);
    for (auto& [digest, other] : parted) {
        if (other.isAtEnd)
            take(other.set);
        else
            waiting_.push_back(std::move(other.set));
    }
    if (set.candidates.size() > 1) set.hash.update({first_.get(), count});
    set.offset += count;
    return count < kChunk;
}

void ContentComparison::part(Candidate candidate, const Set& from, std::span<const unsigned char> chunk,
                             PartedSets& parted) {
    SHA256 hash(from.hash);
    hash.update(chunk);
    const SHA256::Digest digest = SHA256(hash).finish();
    if (openCount_ > kMostOpen) letGo(candidate);
    auto place = parted.find(digest);
    if (place == parted.end()) {
        Set set{.candidates = {}, .hash = std::move(hash), .offset = from.offset + chunk.size()};
        place = parted.emplace(digest, Parted{.set = std::move(set), .isAtEnd = chunk.size() < kChunk}).first;
    }
    place->second.set.candidates.push_back(std::move(candidate));
}

void ContentComparison::take(Set& set) {
    for (Candidate& candidate : set.candidates)
        letGo(candidate);
    if (set.candidates.size() < 2) return;
    EqualFiles equal{.hash = set.hash.finish(), .files = {}};
    std::ranges::transform(set.candidates, std::back_inserter(equal.files), &Candidate::file);
    found_.push_back(std::move(equal));
}

bool ContentComparison::makeReady(Candidate& candidate) {
    if (candidate.reader != nullptr) return true;
    candidate.reader = open_(candidate.file);
    if (candidate.reader == nullptr) return false;
    ++openCount_;
    if (candidate.length < 0) candidate.length = candidate.reader->status().size.value_or(0);
    return true;
}

std::optional<std::size_t> ContentComparison::read(Candidate& candidate, std::uint64_t offset,
                                                   std::span<unsigned char> buffer) {
    if (!makeReady(candidate)) return std::nullopt;
    const auto length = static_cast<std::uint64_t>(candidate.length);
    std::size_t count = 0;
    while (count < buffer.size()) {
        const std::optional<std::size_t> got = candidate.reader->readAt(offset + count, buffer.subspan(count));
        if (!got || *got == 0) break;
        count += *got;
        // There was room for more, and no more came.
        if (count < buffer.size() && offset + count == length) break;
    }
    // Somebody writes to it right now: it may go on without an end, and isn't what it was.
    if (offset + count > length) return std::nullopt;
    return count;
}

void ContentComparison::letGo(Candidate& candidate) {
    if (candidate.reader == nullptr) return;
    candidate.reader.reset();
    --openCount_;
}

}  // namespace tavrin
