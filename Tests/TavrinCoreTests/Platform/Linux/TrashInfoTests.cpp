#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <gtest/gtest.h>

#include <ctime>
#include <optional>
#include <string>
#include <utility>

namespace tavrin {
namespace {

/// Local time as this process has it from here on.
class TimeZone {
  public:
    explicit TimeZone(const char* name) : variable_(std::in_place, "TZ", name) { ::tzset(); }
    ~TimeZone() {
        variable_.reset();
        ::tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    std::optional<test::ScopedVariable> variable_;
};

TEST(TrashInfo, isWrittenAsTheStandardSaysInLocalTime) {
    const TimeZone zone("XYZ-2");
    EXPECT_EQ(trashInfoText("/home/nina/a b%\xC3\xB1\xFF\n", 1'790'000'000),
              "[Trash Info]\nPath=/home/nina/a%20b%25%C3%B1%FF%0A\nDeletionDate=2026-09-21T16:13:20\n");
}

TEST(TrashInfo, everyByteOfAPathComesBack) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte)
        path.push_back(static_cast<char>(byte));
    const std::optional<TrashInfo> info = parseTrashInfo(trashInfoText(path, 1'790'000'000));
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->path, path);
    EXPECT_EQ(info->deleted, Date::fromUnix(1'790'000'000));
}

TEST(TrashInfo, isReadAsOtherProgramsWriteIt) {
    const TimeZone zone("UTC0");
    const TrashInfo expected{"a/b c", Date::fromUnix(1'790'000'000)};
    for (const char* text : {
             "[Trash Info]\nPath=a/b%20c\nDeletionDate=2026-09-21T14:13:20\n",
             "[Trash Info]\nPath=a/b%20c\nDeletionDate=2026-09-21T14:13:20",
             "[Trash Info]\r\nPath=a/b%20c\r\nDeletionDate=2026-09-21T14:13:20\r\n",
             "[Trash Info]\nDeletionDate=2026-09-21T14:13:20\nPath=a/b c\n",
             "[Trash Info]\nX=1\n\nPath=a/b%20c\nPath=second\nDeletionDate=2026-09-21T14:13:20\nDeletionDate=no\n",
             "[Trash Info]\nPath=a/b%20c\nDeletionDate=2026-09-21T14:13:20\n[Other]\nPath=x\n",
         })
        EXPECT_EQ(parseTrashInfo(text), expected) << text;
}

TEST(TrashInfo, aDateThatIsNoneIsLeftOut) {
    for (const char* date : {"", "2026-09-21", "2026-09-21 14:13:20", "2026-09-2xT14:13:20", "T", "yesterday"})
        EXPECT_EQ(parseTrashInfo(std::string("[Trash Info]\nPath=/a\nDeletionDate=") + date), (TrashInfo{"/a", {}}))
            << date;
}

TEST(TrashInfo, whatHasNoHeadingOrNoPathIsNone) {
    for (const char* text : {"", "\n", "Path=/a\n", "[Trash Info", "[Trash Info]", "[Trash Info]\nPath=\n",
                             "[Trash Info]\nPath=%\n", "[Trash Info]\nPath=%00\n", "\n[Trash Info]\nPath=/a\n",
                             "[Trash Info]\n[Other]\nPath=/a\n", "[Trash Info]\npath=/a\n"})
        EXPECT_EQ(parseTrashInfo(text), std::nullopt) << text;
}

}  // namespace
}  // namespace tavrin
