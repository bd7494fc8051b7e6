#include "TavrinCore/Scanning/ContentComparison.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace tavrin {
namespace {

/// Two of them fit into a processor's second cache, so that bytes are compared and hashed where they were just put.
constexpr std::size_t kChunk = std::size_t{256} * 1024;
/// Beginnings of files that are held at the same time.
constexpr std::size_t kMostBeginnings = 64;

bool isSame(std::span<const unsigned char> a, std::span<const unsigned char> b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace

std::size_t ContentComparison::DigestHash::operator()(const SHA256::Digest& digest) const {
    std::size_t hash = 0;
    std::memcpy(&hash, digest.data(), sizeof hash);
    return hash;
}

ContentComparison::ContentComparison(const Open& open, const CancellationCallback& isCancelled)
    : open_(open),
      isCancelled_(isCancelled),
      firstChunks_(new unsigned char[kMostBeginnings * kFirstChunk]),
      first_(new unsigned char[kChunk]),
      other_(new unsigned char[kChunk]),
      spare_(new unsigned char[kChunk]) {}

std::vector<EqualFiles> ContentComparison::equalFiles(std::span<const std::uint32_t> files) {
    found_.clear();
    waiting_.clear();
    openCount_ = 0;
    hadToWait_ = false;
    std::vector<std::uint32_t> rest(files.begin(), files.end());
    while (!rest.empty()) {
        rest = begin(rest);
        while (!waiting_.empty()) {
            Set set = std::move(waiting_.back());
            waiting_.pop_back();
            readOn(std::move(set));
        }
    }
    return std::move(found_);
}

std::vector<std::uint32_t> ContentComparison::begin(std::span<const std::uint32_t> files) {
    std::vector<std::uint32_t> rest;
    std::vector<Beginning> beginnings;
    for (const std::uint32_t file : files) {
        if (isCancelled_()) throw ScanError::cancelled();
        Candidate candidate{.file = file};
        const bool isFull = beginnings.size() == kMostBeginnings;
        // Behind those that are held; where there is no room for one more, into a buffer that is free as yet.
        unsigned char* place = isFull ? other_.get() : firstChunks_.get() + beginnings.size() * kFirstChunk;
        const std::optional<std::size_t> count = read(candidate, 0, {place, kFirstChunk});
        const std::span<const unsigned char> bytes(place, count.value_or(0));
        const auto same =
            std::ranges::find_if(beginnings, [bytes](const Beginning& each) { return isSame(each.bytes, bytes); });
        const bool mustWait = isFull && same == beginnings.end();
        if (!count || mustWait || openCount_ > kMostOpen) letGo(candidate);
        if (!count) continue;
        if (mustWait)
            rest.push_back(file);
        else
            (same != beginnings.end() ? *same : beginnings.emplace_back(bytes))
                .candidates.push_back(std::move(candidate));
    }
    for (Beginning& beginning : beginnings)
        goOnFrom(beginning);
    return rest;
}

void ContentComparison::goOnFrom(Beginning& beginning) {
    if (beginning.candidates.size() < 2) {
        letGo(beginning.candidates.front());
        return;
    }
    Set set{.candidates = std::move(beginning.candidates), .hash = SHA256(), .offset = beginning.bytes.size()};
    set.hash.update(beginning.bytes);
    if (set.offset < kFirstChunk)
        take(set);
    else
        waiting_.push_back(std::move(set));
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
    std::optional<Loner> loner;
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
        } else if (!loner && parted.empty()) {
            loner = Loner{.candidate = std::move(candidate), .bytes = {buffer, *got}};
            std::swap(other_, spare_);
        } else {
            if (loner) part(std::move(loner->candidate), set, loner->bytes, parted);
            loner.reset();
            part(std::move(candidate), set, {buffer, *got}, parted);
        }
    }
    if (loner) letGo(loner->candidate);
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

void ContentComparison::part(Candidate candidate, const Set& from, std::span<const unsigned char> bytes,
                             PartedSets& parted) {
    SHA256 hash(from.hash);
    hash.update(bytes);
    const SHA256::Digest digest = SHA256(hash).finish();
    if (openCount_ > kMostOpen) letGo(candidate);
    auto place = parted.find(digest);
    if (place == parted.end()) {
        Set set{.candidates = {}, .hash = std::move(hash), .offset = from.offset + bytes.size()};
        const bool isAtEnd = bytes.size() < kChunk;
        place = parted.emplace(digest, Parted{.set = std::move(set), .isAtEnd = isAtEnd}).first;
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
    hadToWait_ = hadToWait_ || candidate.reader->hadToWait();
    candidate.reader.reset();
    --openCount_;
}

}  // namespace tavrin
