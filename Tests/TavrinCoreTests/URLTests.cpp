#include "TavrinCore/Models/URL.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

using namespace std::string_literals;

TEST(URL, aTrailingSlashMarksADirectoryAndIsNotPartOfThePath) {
    const URL folder = URL::fromPath("/a/b/");
    EXPECT_EQ(folder.path(), "/a/b");
    EXPECT_TRUE(folder.hasDirectoryPath());
    EXPECT_EQ(folder.lastPathComponent(), "b");
    EXPECT_FALSE(URL::fromPath("/a/b").hasDirectoryPath());
    EXPECT_NE(folder, URL::fromPath("/a/b"));
    EXPECT_EQ(URL::fromPath("/a/b", true), folder);
}

TEST(URL, theRootIsItsOwnLastComponentAndItsOwnParent) {
    const URL root = URL::fromPath("///");
    EXPECT_EQ(root.path(), "/");
    EXPECT_EQ(root.lastPathComponent(), "/");
    EXPECT_EQ(root.deletingLastPathComponent(), root);
    EXPECT_EQ(root.absoluteString(), "file:///");
    EXPECT_EQ(root, URL());
}

TEST(URL, aRelativePathIsTakenBelowTheCurrentFolder) {
    EXPECT_EQ(URL::fromPath("x/y").path(), (std::filesystem::current_path() / "x/y").native());
}

TEST(URL, aPathWithAZeroByteIsRefused) {
    EXPECT_THROW((void)URL::fromPath("/a\0b"s), std::invalid_argument);
    EXPECT_THROW((void)URL().appendingPathComponent("a\0b"s), std::invalid_argument);
}

TEST(URL, theExtensionIsWhatFollowsTheLastDot) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases{
        {"/a/.hidden", ""}, {"/a/foo.tar.gz", "gz"},   {"/a/a.", ""}, {"/a/Foo.APP/", "APP"}, {"/a.b/c", ""}, {"/", ""},
        {"/a/..", ""},      {"/a/.hidden.txt", "txt"},
    };
    for (const auto& [path, extension] : cases)
        EXPECT_EQ(URL::fromPath(path).pathExtension(), extension) << path;
}

TEST(URL, appendingJoinsWithOneSlashAndKeepsTheDirectoryMark) {
    const URL base = URL::fromPath("/a");
    EXPECT_EQ(base.appendingPathComponent("b/c").path(), "/a/b/c");
    EXPECT_EQ(base.appendingPathComponent("/b/").path(), "/a/b");
    EXPECT_TRUE(base.appendingPathComponent("b/").hasDirectoryPath());
    EXPECT_TRUE(base.appendingPathComponent("b", true).hasDirectoryPath());
    EXPECT_FALSE(base.appendingPathComponent("b").hasDirectoryPath());
    EXPECT_EQ(URL().appendingPathComponent("b").path(), "/b");
}

TEST(URL, deletingTheLastComponentGivesTheParentAsADirectory) {
    EXPECT_EQ(URL::fromPath("/a/b").deletingLastPathComponent(), URL::fromPath("/a/"));
    EXPECT_EQ(URL::fromPath("/a").deletingLastPathComponent(), URL());
}

TEST(URL, componentsBeginWithTheRoot) {
    const URL url = URL::fromPath("/a//b/c/");
    EXPECT_EQ(url.pathComponents(), (std::vector<std::string_view>{"/", "a", "b", "c"}));
}

TEST(URL, standardisingRemovesDotsAndDoubledSlashes) {
    EXPECT_EQ(URL::fromPath("/a/./b/../c//d/").standardizedFileURL(), URL::fromPath("/a/c/d/"));
    EXPECT_EQ(URL::fromPath("/../../a").standardizedFileURL(), URL::fromPath("/a"));
    EXPECT_EQ(URL::fromPath("/a/..").standardizedFileURL(), URL());
}

TEST(URL, theAbsoluteFormEncodesTheBytes) {
    EXPECT_EQ(URL::fromPath("/a b/ñ%?#;/").absoluteString(), "file:///a%20b/%C3%B1%25%3F%23%3B/");
    EXPECT_EQ(URL::fromPath("/x\xFF\n").absoluteString(), "file:///x%FF%0A");
}

TEST(URL, everyByteComesBackFromTheAbsoluteForm) {
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') name.push_back(static_cast<char>(byte));
    }
    for (bool directory : {false, true}) {
        const URL url = URL().appendingPathComponent("folder", true).appendingPathComponent(name, directory);
        EXPECT_EQ(URL::fromAbsoluteString(url.absoluteString()), url);
    }
}

TEST(URL, theAbsoluteFormIsReadAsOtherProgramsWriteIt) {
    EXPECT_EQ(URL::fromAbsoluteString("file:///Users/n/x/"), URL::fromPath("/Users/n/x/"));
    EXPECT_EQ(URL::fromAbsoluteString("file://localhost/a%2fb"), URL::fromPath("/a/b"));
    EXPECT_EQ(URL::fromAbsoluteString("file:///ñ"), URL::fromPath("/ñ"));
}

TEST(URL, whatIsNoAbsoluteFileURLIsRefused) {
    for (const char* text : {"", "/a", "file:", "file://", "http:///a", "file://host/a", "file:///a%", "file:///a%2",
                             "file:///a%zz", "file:///a%00b", "file:///a?b", "file:///a#b", "file://a"})
        EXPECT_EQ(URL::fromAbsoluteString(text), std::nullopt) << text;
}

TEST(URL, displayTextShowsBrokenBytesAsReplacementCharacters) {
    EXPECT_EQ(displayText("caf\xC3\xA9"), "café");
    EXPECT_EQ(displayText("a\xFFz\xC3"), "a\uFFFDz\uFFFD");
    EXPECT_EQ(displayText(""), "");
}

TEST(URL, lineTextStaysInItsRow) {
    EXPECT_EQ(lineText("caf\xC3\xA9 a\xFFz"), "café a\uFFFDz");
    EXPECT_EQ(lineText("a\nb\r\tc\x1B[0m\x7F"), "a\uFFFDb\uFFFD\uFFFDc\uFFFD[0m\uFFFD");
    // NEL, the separators of lines and of paragraphs.
    EXPECT_EQ(lineText("a\xC2\x85"
                       "b\u2028c\u2029d"),
              "a\uFFFDb\uFFFDc\uFFFDd");
}

TEST(URL, safeTextKeepsItsLinesAndTabsAndNothingElseThatControls) {
    EXPECT_EQ(safeText("a\tb\r\nc\n"), "a\tb\nc\n");
    EXPECT_EQ(safeText("a\rb\x1b[2Jc\x7F"), "a\uFFFDb\uFFFD[2Jc\uFFFD");
    EXPECT_EQ(safeText("a\u2028b \u202Ec"), "a\u2028b \uFFFDc");
    EXPECT_EQ(safeText("caf\xC3\xA9 \xFF"), "café \uFFFD");
}

TEST(URL, lineTextCannotBeTurnedAround) {
    for (const char* mark : {"\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"})
        EXPECT_EQ(lineText(std::string("photo") + mark + "gpj.exe"), "photo\uFFFDgpj.exe");
    // Text that runs from right to left by itself stays as it is, and so do the marks that only lean.
    EXPECT_EQ(lineText("שלום \u200Eabc\u200F 🗑"), "שלום \u200Eabc\u200F 🗑");
}

}  // namespace
}  // namespace tavrin
