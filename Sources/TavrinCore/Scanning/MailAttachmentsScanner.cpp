#include "TavrinCore/Scanning/MailAttachmentsScanner.h"

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Platform/Packages.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace tavrin {
namespace {

constexpr std::string_view kAttachments = "Attachments";

/// Finds the folders of that name, and doesn't look into one, nor into packages and what is hidden.
class AttachmentDirs final : public WalkVisitor {
  public:
    explicit AttachmentDirs(ScanRun& run) : run_(run) {}

    WalkStep visit(WalkEntry& entry) override {
        if (run_.isCancelled()()) return WalkStep::stop;
        if (entry.isHidden() || entry.type() != FileType::directory) return WalkStep::skip;
        if (entry.name() != kAttachments) return isPackageName(entry.name()) ? WalkStep::skip : WalkStep::goOn;
        found.push_back(entry.url());
        return WalkStep::skip;
    }

    void failed(const URL& folder, const SystemError& error) override { run_.denials().recordIfRefused(folder, error); }

    std::vector<URL> found;

  private:
    ScanRun& run_;
};

}  // namespace

MailAttachmentsScanner::MailAttachmentsScanner(std::optional<URL> home)
    : home_(home ? *std::move(home) : FileSystemUtils::home()) {}

std::vector<MailAttachmentsScanner::Source> MailAttachmentsScanner::sources() const {
    const auto below = [this](std::string_view path) { return home_.appendingPathComponent(path, true); };
    return {
        {"Apple Mail", below("Library/Mail"), false},
        {"Apple Mail", below("Library/Containers/com.apple.mail/Data/Library/Mail Downloads"), true},
        {"Outlook", below("Library/Group Containers/UBF8T346G9.Office/Outlook"), false},
        {S::legacyOutlookName(), below("Documents/Microsoft User Data"), false},
    };
}

/// One scan under way: first the folders of each program, then one finding of them.
class MailAttachmentsScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const std::vector<Source>& sources) {
        for (const Source& source : sources) {
            run_.throwIfCancelled();
            if (FileSystemUtils::exists(source.root)) lookInto(source);
        }
        for (const Client& client : clients_)
            addFinding(client);
        return run_.finishLargestFirst(run_.bytes());
    }

  private:
    struct Client {
        std::string label;
        std::vector<URL> folders;
    };

    void lookInto(const Source& source) {
        if (FileSystemUtils::isPermissionDenied(source.root)) {
            run_.denials().record(source.root);
            return;
        }
        run_.report({.phase = S::scanMailAttachments(source.label), .currentPath = source.root.path()});
        const std::string realRoot = source.root.resolvingSymlinksInPath().path();
        for (const URL& folder : foldersOf(source)) {
            // The same store reached over two paths counts once.
            if (!seen_.insert(realRoot + folder.path().substr(source.root.path().size())).second) continue;
            run_.throwIfCancelled();
            if (run_.size(folder) >= 1) clientFolders(source.label).push_back(folder);
        }
    }

    [[nodiscard]] std::vector<URL> foldersOf(const Source& source) {
        if (source.directChildren) return run_.children(source.root);
        AttachmentDirs visitor(run_);
        walkDirectory(source.root, {.rootLink = LastLink::follow}, visitor);
        run_.throwIfCancelled();
        return std::move(visitor.found);
    }

    [[nodiscard]] std::vector<URL>& clientFolders(const std::string& label) {
        const auto client = std::ranges::find(clients_, label, &Client::label);
        if (client != clients_.end()) return client->folders;
        return clients_.emplace_back(Client{label, {}}).folders;
    }

    /// Measured once more: mail goes on arriving while a large store is looked through.
    void addFinding(const Client& client) {
        std::int64_t size = 0;
        for (const URL& folder : client.folders)
            size = FileSystemUtils::sumOfSizes(size, run_.sizeWithoutDenials(folder));
        if (size < 1) return;
        run_.add({.id = UUID::random(),
                  .url = client.folders.front(),
                  .size = size,
                  .category = ScanCategory::mailAttachment,
                  .detail = S::detailAttachmentFolders(std::ssize(client.folders), ByteFormatter::string(size)),
                  .groupID = client.label,
                  .relatedURLs = {std::next(client.folders.begin()), client.folders.end()}});
    }

    ScanRun run_;
    std::unordered_set<std::string> seen_;
    /// In the order of first use.
    std::vector<Client> clients_;
};

std::vector<CleanableItem> MailAttachmentsScanner::scan(const ProgressCallback& progress,
                                                        const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(sources());
}

}  // namespace tavrin
