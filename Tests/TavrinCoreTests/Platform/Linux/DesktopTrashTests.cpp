// What we move, the desktop's own tools list and bring back: GIO's (with its daemon, on a bus of its own that ends with
// the command) and trash-cli. They must be installed; a test that passed without them would prove nothing.
#include "Support/Command.h"
#include "Support/OwnMounts.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Models/PercentEncoding.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::CommandResult;
using test::contentsOf;
using test::somethingAt;
using test::TrashWorld;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string gio(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"dbus-run-session", "--", "gio"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    CommandResult result = test::run(command);
    EXPECT_EQ(result.status, 0) << "gio " << arguments[0] << " " << arguments[1];
    return result.output;
}

/// GIO's list shows what is not ASCII as "\xff".
std::string shownByGIO(const std::string& path) {
    std::string shown;
    for (const char c : path) {
        if (c >= ' ' && c <= '~') {
            shown += c;
            continue;
        }
        for (const char digit : percentEncoded(std::string_view(&c, 1)))
            shown += digit == '%' ? std::string("\\x") : std::string(1, asciiLower(digit));
    }
    return shown;
}

/// GIO's address of an item in the home's Trash.
std::string addressOf(const std::string& name) {
    return "trash:///" + percentEncoded(name);
}

const std::vector<std::string>& names() {
    static const std::vector<std::string> all{"plain", "with blank", "100%25", "new\nline", "br\xFFken", "ünïcode.txt"};
    return all;
}

TEST(DesktopTrash, gioListsWhatWasCleanedWithItsOrigin) {
    const TrashWorld world;
    std::vector<URL> files;
    for (const std::string& name : names())
        files.push_back(world.home().file("folder/" + name));
    ASSERT_EQ(clean(files).removedItems, static_cast<std::int64_t>(files.size()));
    const std::vector<std::string> lines = linesOf(gio({"trash", "--list"}));
    EXPECT_EQ(lines.size(), files.size());
    for (const URL& file : files) {
        const std::string expected = addressOf(std::string(file.lastPathComponent())) + "\t" + shownByGIO(file.path());
        EXPECT_NE(std::ranges::find(lines, expected), lines.end()) << expected;
    }
}

TEST(DesktopTrash, gioBringsBackWhatWasCleaned) {
    const TrashWorld world;
    const std::vector<URL> files{world.home().file("folder/plain", "1"), world.home().file("folder/with blank", "2"),
                                 world.home().file("folder/100%25", "3")};
    const CleanResult result = clean(files);
    gio({"trash", "--restore", addressOf("plain"), addressOf("with blank"), addressOf("100%25")});
    EXPECT_EQ(contentsOf(files[0]) + contentsOf(files[1]) + contentsOf(files[2]), "123");
    EXPECT_TRUE(world.notes().empty());
    EXPECT_EQ(Cleaner().restore(result.restorable).pending, result.restorable)
        << "what others have put back is gone from the Trash for us";
}

TEST(DesktopTrash, namesOfAnyBytesComeBackAsAFileManagerMovesThem) {
    // `gio trash --restore` of GLib 2.74 writes such names in the form in which it shows them, "\\xff".
    for (const char* name : {"new\nline", "br\xFFken", "\u00FCn\u00EFcode.txt"}) {
        const TrashWorld world;
        const URL file = world.home().file(std::string("folder/") + name, name);
        ASSERT_EQ(clean({file}).removedItems, 1);
        gio({"move", addressOf(name), file.absoluteString()});
        EXPECT_EQ(contentsOf(file), name);
        EXPECT_TRUE(world.notes().empty());
    }
}

TEST(DesktopTrash, whatWeEmptyIsGoneForTheDesktopToo) {
    const TrashWorld world;
    const CleanResult result =
        clean({world.home().file("a"), world.home().file("folder/b").deletingLastPathComponent()});
    std::vector<URL> trashed;
    for (const TrashedEntry& entry : result.restorable)
        trashed.push_back(entry.trashed);
    EXPECT_EQ(Cleaner().removePermanently(trashed, [](const ScanProgress&) {}).removedItems, 2);
    EXPECT_EQ(gio({"trash", "--list"}), "");
}

TEST(DesktopTrash, trashListShowsTheRightOrigins) {
    const TrashWorld world;
    std::vector<URL> files;
    // trash-list can't write bytes that are no text.
    for (const char* name : {"plain", "with blank", "100%25", "new\nline"})
        files.push_back(world.home().file(std::string("folder/") + name));
    ASSERT_EQ(clean(files).removedItems, 4);
    const CommandResult listed = test::run({"trash-list"});
    EXPECT_EQ(listed.status, 0);
    for (const URL& file : files)
        EXPECT_NE(listed.output.find(" " + file.path() + "\n"), std::string::npos) << listed.output;
}

TEST(DesktopTrash, anItemOfASecondFileSystemIsListedAndBroughtBack) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk);
        const URL file = world.home().file("disk/deep/with blank%", "bytes");
        ASSERT_EQ(clean({file}).removedItems, 1);
        // GIO passes over file systems in memory, trash-cli doesn't.
        const CommandResult listed = test::run({"trash-list"});
        EXPECT_NE(listed.output.find(" " + file.path() + "\n"), std::string::npos) << listed.output;
        const CommandResult back =
            test::run({"sh", "-c", "cd \"$0\" && echo 0 | trash-restore", disk.path() + "/deep"});
        EXPECT_EQ(back.status, 0);
        ASSERT_TRUE(somethingAt(file)) << back.output;
        EXPECT_EQ(contentsOf(file), "bytes");
    });
}

TEST(DesktopTrash, weBringBackWhatTheDesktopTrashedBesideUs) {
    const TrashWorld world;
    const URL ours = world.home().file("ours/x", "ours");
    const URL theirs = world.home().file("theirs/x", "theirs");
    const CleanResult result = clean({ours});
    ASSERT_EQ(test::run({"gio", "trash", theirs.path()}).status, 0);
    EXPECT_EQ(world.files().size(), 2U);
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_EQ(contentsOf(ours), "ours");
    ASSERT_EQ(world.files().size(), 1U);
    EXPECT_EQ(world.notedOrigin(world.files()[0]), theirs.path());
}

}  // namespace
}  // namespace tavrin
