#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/MailAttachmentsScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::doneReport;
using test::LockedFolder;
using test::RecordedScan;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kMail = "Library/Mail";
const std::string kDownloads = "Library/Containers/com.apple.mail/Data/Library/Mail Downloads";
const std::string kOutlook = "Library/Group Containers/UBF8T346G9.Office/Outlook";
const std::string kLegacy = "Documents/Microsoft User Data";

RecordedScan scanOf(const TestFolder& home) {
    return test::record(MailAttachmentsScanner(home.url()));
}

/// All folders of a finding, relative to the home.
std::vector<std::string> foldersOf(const CleanableItem& item, const TestFolder& home) {
    std::vector<URL> urls{item.url};
    urls.insert(urls.end(), item.relatedURLs.begin(), item.relatedURLs.end());
    std::vector<std::string> paths;
    for (const URL& url : urls)
        paths.push_back(url.path().substr(home.path().size() + 1));
    return paths;
}

TEST(MailAttachmentsScanner, eachProgramIsOneFindingWithAllItsFolders) {
    const TestFolder home;
    home.fileOfSize(kMail + "/V10/account/Attachments/1/photo.jpg", 60'000);
    home.fileOfSize(kDownloads + "/ABC/letter.pdf", 20'000);
    home.fileOfSize(kOutlook + "/Profile/Data/Attachments/slides.pptx", 40'000);
    home.fileOfSize(kLegacy + "/Office/Attachments/old.doc", 9'000);

    const RecordedScan scan = scanOf(home);

    ASSERT_EQ(scan.items.size(), 3U);
    EXPECT_EQ(scan.items[0].groupID, "Apple Mail");
    EXPECT_THAT(foldersOf(scan.items[0], home), ElementsAre(kMail + "/V10/account/Attachments", kDownloads + "/ABC"));
    EXPECT_EQ(scan.items[1].groupID, "Outlook");
    EXPECT_EQ(scan.items[2].groupID, S::legacyOutlookName());
    for (const CleanableItem& item : scan.items) {
        EXPECT_EQ(item.category, ScanCategory::mailAttachment);
        EXPECT_FALSE(item.isSelected);
        EXPECT_FALSE(item.isGroupKeeper);
    }
    EXPECT_THAT(scan.phasesBeforeTheEnd(),
                ElementsAre(S::scanMailAttachments("Apple Mail"), S::scanMailAttachments("Apple Mail"),
                            S::scanMailAttachments("Outlook"), S::scanMailAttachments(S::legacyOutlookName())));
    EXPECT_EQ(scan.reports[1],
              (ScanProgress{.phase = S::scanMailAttachments("Apple Mail"), .currentPath = (home / kDownloads).path()}));
    EXPECT_EQ(scan.reports.back().bytesFound, scan.items[0].size + scan.items[1].size + scan.items[2].size);
}

TEST(MailAttachmentsScanner, theSizeAndTheDetailAreOfAllFoldersTogether) {
    const TestFolder home;
    const URL first = home.folder(kMail + "/Attachments");
    home.fileOfSize(kMail + "/Attachments/a", 60'000);
    const auto detail = [](std::int64_t count, std::int64_t size) {
        return S::detailAttachmentFolders(count, ByteFormatter::string(size));
    };
    CleanableItem item = scanOf(home).items.at(0);
    EXPECT_EQ(item.size, FileSystemUtils::size(first));
    EXPECT_EQ(item.detail, detail(1, item.size));

    const URL second = home.folder(kDownloads + "/x");
    home.fileOfSize(kDownloads + "/x/b", 30'000);
    item = scanOf(home).items.at(0);
    EXPECT_EQ(item.size, FileSystemUtils::size(first) + FileSystemUtils::size(second));
    EXPECT_EQ(item.detail, detail(2, item.size));
    EXPECT_EQ(S::detailAttachmentFolders.in(Language::english, 1, "9 KB"), "1 attachment folder · 9 KB");
    EXPECT_EQ(S::detailAttachmentFolders.in(Language::english, 2, "9 KB"), "2 attachment folders · 9 KB");
    EXPECT_EQ(S::detailAttachmentFolders.in(Language::spanish, 1, "9 KB"), "1 carpeta(s) de adjuntos · 9 KB");
}

TEST(MailAttachmentsScanner, theLegacyNameKeepsTheBeginningThatTheScreenKnows) {
    const auto names = S::nameTexts();
    const auto row = std::ranges::find(names, "legacyOutlookName", &StaticMessage::key);
    ASSERT_NE(row, names.end());
    EXPECT_EQ(row->english, "Outlook (legacy)");
    EXPECT_EQ(row->spanish, "Outlook (antiguo)");
}

TEST(MailAttachmentsScanner, theFolderOfDownloadsCountsEachVisibleChildFilesToo) {
    const TestFolder home;
    home.fileOfSize(kDownloads + "/folder/a", 20'000);
    home.fileOfSize(kDownloads + "/loose.pdf", 10'000);
    home.fileOfSize(kDownloads + "/.hidden", 10'000);
    home.folder(kDownloads + "/empty");

    const RecordedScan scan = scanOf(home);

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_THAT(foldersOf(scan.items[0], home),
                testing::UnorderedElementsAre(kDownloads + "/folder", kDownloads + "/loose.pdf"));
}

TEST(MailAttachmentsScanner, anAttachmentsFolderInsideAnotherIsNotReportedSeparately) {
    const TestFolder home;
    home.file(kMail + "/Attachments/1/Attachments/x");
    EXPECT_THAT(foldersOf(scanOf(home).items.at(0), home), ElementsAre(kMail + "/Attachments"));
}

TEST(MailAttachmentsScanner, onlyAFolderOfExactlyThatNameCounts) {
    const TestFolder home;
    home.file(kMail + "/a/Attachments", "a file");
    home.file(kMail + "/b/attachments/x");
    home.file(kMail + "/c/Attachments 2/x");
    home.file("elsewhere/x");
    home.folder(kMail + "/d");
    home.link(kMail + "/d/Attachments", "../../../elsewhere");
    home.file(kMail + "/.hidden/Attachments/x");
    EXPECT_THAT(scanOf(home).items, IsEmpty());
}

TEST(MailAttachmentsScanner, aPackageIsNotEnteredAndAnOrdinaryFolderIs) {
    const TestFolder home;
    home.file(kMail + "/Exported.mbox/Attachments/x");
    home.file(kMail + "/Plug.app/Attachments/x");
    home.file(kMail + "/V10/Attachments/x");
    EXPECT_THAT(foldersOf(scanOf(home).items.at(0), home), ElementsAre(kMail + "/V10/Attachments"));
}

TEST(MailAttachmentsScanner, aStoreReachedOverALinkIsMeasuredOnce) {
    const TestFolder home;
    home.fileOfSize("disk/Mail/Attachments/x", 60'000);
    home.folder("Library");
    home.link(kMail, "../disk/Mail");
    home.folder("Documents");
    home.link(kLegacy, "../disk/Mail");

    const RecordedScan scan = scanOf(home);

    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.items[0].groupID, "Apple Mail");
    EXPECT_THAT(foldersOf(scan.items[0], home), ElementsAre(kMail + "/Attachments"));
}

TEST(MailAttachmentsScanner, aProgramWhoseFoldersAreEmptyIsNoFinding) {
    const TestFolder home;
    home.folder(kMail + "/Attachments");
    home.file(kOutlook + "/Attachments/nothing", "");
    const RecordedScan scan = scanOf(home);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.reports.size(), 3U);
}

TEST(MailAttachmentsScanner, withoutAnyMailThereIsNothingButTheLastReport) {
    const TestFolder home;
    EXPECT_THAT(scanOf(home).reports, ElementsAre(doneReport(0, 0)));
}

TEST(MailAttachmentsScanner, aRefusedMailFolderFailsTheScanUnlessSomethingElseIsFound) {
    const TestFolder home;
    const URL mail = home.folder(kMail);
    const LockedFolder lock(mail);
    const RecordedScan refused = scanOf(home);
    EXPECT_EQ(refused.failure, ScanError::accessDenied(mail));
    EXPECT_THAT(refused.reports, IsEmpty()) << "nothing is announced that can't be looked at";

    home.file(kOutlook + "/Attachments/x");
    const RecordedScan partial = scanOf(home);
    EXPECT_EQ(partial.items.size(), 1U);
    EXPECT_EQ(partial.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(partial.reports.back().blockedFolders, 1);
}

TEST(MailAttachmentsScanner, aRefusedFolderDeepInTheStoreIsRecordedAndTheRestIsFound) {
    const TestFolder home;
    home.file(kMail + "/a/Attachments/x");
    const URL locked = home.folder(kMail + "/b");
    const LockedFolder lock(locked);
    const RecordedScan scan = scanOf(home);
    EXPECT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
}

TEST(MailAttachmentsScanner, aRootThatIsNoFolderIsAnEmptyOne) {
    const TestFolder home;
    home.file(kMail);
    home.file(kDownloads);
    const RecordedScan scan = scanOf(home);
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_EQ(scan.phasesBeforeTheEnd(), std::vector(2, S::scanMailAttachments("Apple Mail")));
    EXPECT_EQ(scan.reports.back(), doneReport(0, 0));
}

TEST(MailAttachmentsScanner, aProgramWhoseFoldersVanishBeforeTheSecondMeasureIsNoFinding) {
    const TestFolder home;
    home.fileOfSize(kMail + "/V10/Attachments/photo.jpg", 60'000);
    home.fileOfSize(kOutlook + "/Attachments/slides.pptx", 40'000);
    const std::string later = (home / kOutlook).path();
    const auto removeWhenItIsBehind = [&](const ScanProgress& report) {
        if (report.currentPath == later) std::filesystem::remove_all((home / kMail).path());
    };
    const RecordedScan scan = test::record(MailAttachmentsScanner(home.url()), neverCancelled, removeWhenItIsBehind);
    ASSERT_EQ(scan.items.size(), 1U);
    EXPECT_EQ(scan.items.front().groupID, "Outlook");
}

TEST(MailAttachmentsScanner, aCancelAtAnyMomentFailsTheScan) {
    const TestFolder home;
    home.file(kMail + "/V10/Attachments/x");
    home.file(kMail + "/V10/message.emlx");
    home.file(kDownloads + "/a/b");
    home.file(kOutlook + "/Attachments/x");
    test::expectCancellableAtEveryPoll(MailAttachmentsScanner(home.url()));
}

TEST(MailAttachmentsScanner, theFactorysScannerLooksIntoTheHome) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    home.file(kMail + "/Attachments/x");
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::mailAttachments);
    EXPECT_EQ(scanner->kind(), ModuleKind::mailAttachments);
    EXPECT_EQ(test::record(*scanner).items.size(), 1U);
}

}  // namespace
}  // namespace tavrin
