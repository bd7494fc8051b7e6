// A whole walk over a file system that says whatever the input says: listings in any pieces, positions that lead back,
// calls that fail, folders in folders. The walk must end, hold few descriptors, and give every one of them back.
#include "TavrinCore/Platform/Linux/DirectoryWalker.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>

namespace {

using namespace tavrin;

void require(bool holds) {
    if (!holds) std::abort();
}

/// Answers each call from the input, and fails all once it is used up.
class HostileCalls final : public WalkCalls {
  public:
    explicit HostileCalls(std::span<const std::uint8_t> input) : input_(input) {}

    int open(int /*folder*/, const char* name, int /*flags*/) override {
        require(*name != '\0');
        if (fails()) return -1;
        require(++inUse <= 8);
        return next_++;
    }
    ssize_t list(int /*folder*/, char* buffer, std::size_t size) override {
        require(size >= 512);
        if (fails()) return -1;
        const std::size_t count = std::min({static_cast<std::size_t>(take()) * 2, size, input_.size()});
        std::copy_n(input_.data(), count, buffer);
        input_ = input_.subspan(count);
        return static_cast<ssize_t>(count);
    }
    off_t seek(int /*folder*/, off_t position) override { return fails() ? -1 : position; }
    int status(int /*folder*/, const char* /*name*/, int /*flags*/, unsigned /*fields*/,
               struct statx& result) override {
        if (fails()) return -1;
        std::memset(&result, 0, sizeof result);
        result.stx_mask = ~0U;
        result.stx_mode = static_cast<std::uint16_t>(take() << 8U);
        result.stx_ino = take() % 4U;
        result.stx_blocks = ~std::uint64_t{0} >> take() % 64U;
        result.stx_mtime.tv_sec = static_cast<std::int64_t>(result.stx_blocks);
        return 0;
    }
    int close(int folder) override {
        require(folder < next_);
        require(--inUse >= 0);
        return 0;
    }

    int inUse = 0;

  private:
    std::uint8_t take() {
        if (input_.empty()) return 0;
        const std::uint8_t first = input_.front();
        input_ = input_.subspan(1);
        return first;
    }
    bool fails() {
        constexpr int errors[] = {EIO, EACCES, ENOENT, EMFILE, ELOOP, EINTR, ESTALE, ENOMEM};
        if (!input_.empty() && input_.front() < 0xF0) return false;
        // Without more input, an interruption would be repeated for ever.
        errno = input_.empty() ? EIO : errors[take() % std::size(errors)];
        return true;
    }

    std::span<const std::uint8_t> input_;
    /// No number is given twice: closing one twice shows.
    int next_ = 1'000'000;
};

class Looker final : public WalkVisitor {
  public:
    WalkStep visit(WalkEntry& entry) override {
        require(!entry.name().empty() && entry.name() != "." && entry.name() != "..");
        require(entry.name().find('/') == std::string_view::npos);
        require(entry.url().path().starts_with("/fuzzed/"));
        if (const FileStatus* status = entry.status()) require(status->measure() >= 0);
        return WalkStep::goOn;
    }
    void failed(const URL& folder, const SystemError& /*error*/) override {
        require(folder.path().starts_with("/fuzzed"));
    }
    LeaveStep left(WalkEntry& folder) override {
        require(!folder.name().empty());
        return LeaveStep::goOn;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    HostileCalls calls({data + 1, size - 1});
    Looker looker;
    const WalkLimits limits{.descriptors = 5, .listingBytes = 1024, .arenaBytes = 4096};
    (void)DirectoryWalker(URL::fromPath("/fuzzed"), {.wantsLeft = (*data & 1U) != 0}, looker, calls, limits).run();
    require(calls.inUse == 0);
    return 0;
}
