// Whatever tree, whatever selection: cleaned and put back, everything is as it was.
//
// The one thing that changes is when the folders that held a moved item were last changed: taking a name out of a
// folder and putting it back changes that folder, twice. Every other date stays, folders inside an item included.
#include "Support/Snapshot.h"
#include "Support/TrashWorld.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::setMode;
using test::Snapshot;
using test::snapshotOf;
using test::TrashWorld;

class RandomTree {
  public:
    RandomTree(const TrashWorld& world, unsigned seed) : world_(world), random_(seed) {
        world_.home().folder("tree");
        grow("tree", 0);
        // From the inside out, since making an entry changes its folder's date.
        for (auto path = paths_.rbegin(); path != paths_.rend(); ++path)
            date(world_ / *path);
        for (const std::string& folder : lockedFolders_)
            setMode(world_ / folder, 0555);
    }

    /// Some of it, parents and children mixed and in any order.
    std::vector<URL> selection() {
        std::vector<URL> urls;
        for (const std::string& path : paths_) {
            const bool liesInALockedFolder = std::ranges::any_of(lockedFolders_, [&](const std::string& folder) {
                return path.size() > folder.size() && path.starts_with(folder + "/");
            });
            if (path != "tree" && !liesInALockedFolder && roll(3) == 0) urls.push_back(world_ / path);
        }
        std::ranges::shuffle(urls, random_);
        return urls;
    }

  private:
    unsigned roll(unsigned sides) { return static_cast<unsigned>(random_() % sides); }

    std::string name() {
        static const std::vector<std::string> kinds{"plain",    "with blank", "new\nline",  "100%",
                                                    "\xFF\xFE", "ünïcode",    "dot.tar.gz", ".hidden"};
        return kinds[roll(8)] + std::to_string(roll(50));
    }

    void grow(const std::string& folder, unsigned depth) {
        paths_.push_back(folder);
        const unsigned count = 2 + roll(5);
        for (unsigned i = 0; i < count; ++i) {
            const std::string path = folder + "/" + name();
            if (test::somethingAt(world_ / path)) continue;
            make(path, depth);
        }
        if (depth > 0 && roll(6) == 0) lockedFolders_.push_back(folder);
    }

    void make(const std::string& path, unsigned depth) {
        const unsigned kind = roll(6);
        if (kind < 2 && depth < 4) {
            world_.home().folder(path);
            grow(path, depth + 1);
            return;
        }
        paths_.push_back(path);
        if (kind == 2) {
            ASSERT_EQ(::symlink(roll(2) == 0 ? "nowhere" : "..", (world_ / path).path().c_str()), 0);
        } else if (kind == 3) {
            ASSERT_EQ(::mkfifo((world_ / path).path().c_str(), 0600), 0);
        } else {
            const URL file = world_.home().file(path, std::string(roll(9000), static_cast<char>('a' + roll(26))));
            setMode(file, 0400U + roll(0400));
            attribute(file);
        }
    }

    /// Kept where the file system keeps them.
    void attribute(const URL& file) {
        const std::string value = std::to_string(roll(1000));
        (void)::setxattr(file.path().c_str(), "user.tavrin", value.data(), value.size(), 0);
    }

    void date(const URL& url) {
        const timespec time{1'500'000'000 + static_cast<time_t>(roll(100'000'000)),
                            static_cast<long>(roll(999'999'999))};
        const timespec both[2]{time, time};
        ASSERT_EQ(::utimensat(AT_FDCWD, url.path().c_str(), both, AT_SYMLINK_NOFOLLOW), 0);
    }

    const TrashWorld& world_;
    std::mt19937 random_;
    /// A folder before what lies in it.
    std::vector<std::string> paths_;
    std::vector<std::string> lockedFolders_;
};

/// Without the dates of the folders that held a moved item.
Snapshot comparable(Snapshot snapshot, const URL& root, const std::vector<TrashedEntry>& moved) {
    for (const TrashedEntry& entry : moved) {
        const std::string parent = entry.original.deletingLastPathComponent().path();
        snapshot.at(parent == root.path() ? "" : parent.substr(root.path().size() + 1)).modified = 0;
    }
    return snapshot;
}

class RoundTrip : public testing::TestWithParam<unsigned> {};

TEST_P(RoundTrip, ofAnySelectionChangesNothing) {
    const TrashWorld world;
    RandomTree tree(world, GetParam());
    const URL root = world / "tree";
    const Snapshot before = snapshotOf(root);
    const std::vector<URL> selection = tree.selection();

    const CleanResult cleaned = clean(selection);
    EXPECT_TRUE(cleaned.failures.empty());
    EXPECT_EQ(cleaned.removedItems, static_cast<std::int64_t>(cleaned.restorable.size()));
    for (const TrashedEntry& entry : cleaned.restorable)
        EXPECT_FALSE(test::somethingAt(entry.original));
    EXPECT_EQ(world.files().size(), cleaned.restorable.size());

    const RestoreResult restored = Cleaner().restore(cleaned.restorable);
    EXPECT_EQ(restored.restored, cleaned.removedItems);
    EXPECT_TRUE(restored.failures.empty());
    EXPECT_TRUE(comparable(snapshotOf(root), root, cleaned.restorable) == comparable(before, root, cleaned.restorable));
    EXPECT_TRUE(world.files().empty());
    EXPECT_TRUE(world.notes().empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoundTrip, testing::Range(0U, 25U));

}  // namespace
}  // namespace tavrin
