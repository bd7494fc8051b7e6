#include "TavrinCore/Scanning/FileIndex.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

TEST(FileIndex, givesBackWhatItWasGiven) {
    FileIndex index;
    const URL url = URL::fromPath("/home/ann/Pictures/one.jpg");
    const FileStatus status{.type = FileType::regular,
                            .size = 100,
                            .allocatedSize = 4'096,
                            .modified = Date::fromUnix(1'000, 5),
                            .identifier = FileIdentifier{.device = 7, .inode = UINT64_MAX}};
    index.add(url, status);

    ASSERT_EQ(index.count(), 1U);
    EXPECT_EQ(index.url(0), url);
    EXPECT_EQ(index.name(0), "one.jpg");
    EXPECT_EQ(index.size(0), 4'096);
    EXPECT_EQ(index.length(0), 100);
    EXPECT_EQ(index.modified(0), Date::fromUnix(1'000, 5));
    EXPECT_EQ(index.identifier(0), status.identifier);
}

TEST(FileIndex, aFileWithoutADateCountsAsTheNewest) {
    FileIndex index;
    index.add(URL::fromPath("/a"), {.type = FileType::regular});
    EXPECT_EQ(index.modified(0), Date::distantFuture);
    EXPECT_EQ(index.length(0), std::nullopt);
    EXPECT_EQ(index.identifier(0), std::nullopt);
}

TEST(FileIndex, everyPathComesBackWhateverTheOrderOfFolders) {
    const std::vector<std::string> paths{
        "/home/a/1",   "/home/a/b/2", "/home/a/b/c/3",       "/home/a/4",      "/home/ab/5",
        "/home/a/b/6", "/7",          "/home/a/b/c/d/e/f/8", "/home/a/b/cc/9", "/home/10",
        "/11",         "/other/12",   "/home/a/\xff\xfe",    "/home/a/\xff/13"};
    FileIndex index;
    for (const std::string& path : paths)
        index.add(URL::fromPath(path), {.type = FileType::regular, .identifier = FileIdentifier{path.size() % 3, 1}});
    for (std::size_t i = 0; i < paths.size(); ++i) {
        EXPECT_EQ(index.url(static_cast<FileIndex::Number>(i)).path(), paths[i]);
        EXPECT_EQ(index.identifier(static_cast<FileIndex::Number>(i))->device, paths[i].size() % 3);
    }
}

TEST(FileIndex, holdsNamesAndPathsOfAnyLength) {
    FileIndex index;
    std::string folder;
    for (int depth = 0; depth < 3'000; ++depth)
        folder += "/" + std::string(250, static_cast<char>('a' + depth % 26));
    const std::vector<std::string> paths{"/short/1", folder + "/2", folder + "/" + std::string(250, 'x'), "/short/3"};
    for (const std::string& path : paths)
        index.add(URL::fromPath(path), {});
    for (std::size_t i = 0; i < paths.size(); ++i)
        EXPECT_EQ(index.url(static_cast<FileIndex::Number>(i)).path(), paths[i]);
}

TEST(TextArena, textsStayWhereTheyAreAcrossBlocks) {
    TextArena arena;
    std::vector<TextArena::Position> positions;
    const auto text = [](std::size_t i) { return std::string(i * 37 % 5'000, static_cast<char>('a' + i % 26)); };
    for (std::size_t i = 0; i < 2'000; ++i)
        positions.push_back(arena.add(text(i)));
    const TextArena::Position huge = arena.add(std::string(3'000'000, 'h'));
    const TextArena::Position after = arena.add("after");
    for (std::size_t i = 0; i < positions.size(); ++i)
        ASSERT_EQ(arena.at(positions[i]), text(i));
    EXPECT_EQ(arena.at(huge).size(), 3'000'000U);
    EXPECT_EQ(arena.at(after), "after");
}

}  // namespace
}  // namespace tavrin
