#include "Stage.h"

#include "FakeFindings.h"
#include "TavrinClean/Kit/AppModel.h"
#include "TavrinCore/Cleaning/HistoryStore.h"
#include "TavrinCore/Strings.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMutex>
#include <QStringList>
#include <QTemporaryDir>
#include <QWindow>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace tavrin::test {
namespace {

/// What is told to the fakes, and what they were asked; any thread.
struct Script {
    QMutex mutex;
    QString scans = QStringLiteral("findings");
    QString cleans = QStringLiteral("well");
    int putBackFails = 0;
    bool held = false;
    std::set<std::string> running;
    QStringList asked;
    std::filesystem::path folder;

    template <class Value>
    Value read(Value Script::*member) {
        const QMutexLocker lock(&mutex);
        return this->*member;
    }
    template <class Value>
    void write(Value Script::*member, Value value) {
        const QMutexLocker lock(&mutex);
        this->*member = std::move(value);
    }
    void note(const QString& line) {
        const QMutexLocker lock(&mutex);
        asked.push_back(line);
    }
    void waitWhileHeld(const CancellationCallback& isCancelled) {
        while (read(&Script::held) && !isCancelled())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
};

class FakeScanner final : public Scanner {
  public:
    FakeScanner(ModuleKind kind, std::shared_ptr<Script> script) : kind_(kind), script_(std::move(script)) {}

    [[nodiscard]] ModuleKind kind() const override { return kind_; }

    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override {
        progress({.phase = S::scanCheckingLabel("Caches"),
                  .itemsFound = 12,
                  .bytesFound = 0,
                  .currentPath = "/home/anna/Library/Caches/com.example.browser/Images/00/a-rather-long-name.cache",
                  .fractionCompleted = 0.42});
        script_->waitWhileHeld(isCancelled);
        if (isCancelled()) throw ScanError::cancelled();
        const QString how = script_->read(&Script::scans);
        if (how == QStringLiteral("denied")) throw ScanError::accessDenied(URL());
        if (how == QStringLiteral("broken")) throw std::runtime_error("the disk went away");
        progress({.phase = "", .fractionCompleted = 1.0, .blockedFolders = how == QStringLiteral("blocked") ? 2 : 0});
        if (how == QStringLiteral("empty")) return {};
        if (how == QStringLiteral("many")) return manyFindings(100'000);
        return findingsFor(kind_, script_->folder);
    }

  private:
    ModuleKind kind_;
    std::shared_ptr<Script> script_;
};

CleanResult clean(Script& script, std::span<const CleanableItem> items, const ProgressCallback& progress,
                  const CancellationCallback& isCancelled) {
    script.note(QStringLiteral("clean %1").arg(items.size()));
    progress({.phase = S::scanRemoving(), .currentPath = "com.example.browser", .fractionCompleted = 0.6});
    script.waitWhileHeld(isCancelled);
    const QString how = script.read(&Script::cleans);
    std::size_t toFail = how == QStringLiteral("badly") ? items.size() : how == QStringLiteral("partly") ? 3 : 0;
    CleanResult result;
    for (const CleanableItem& item : items) {
        if (toFail > 0) {
            --toFail;
            result.failures.push_back({item.url, std::string(S::systemRefusal(EACCES))});
            continue;
        }
        result.removedItems += 1 + std::ssize(item.relatedURLs);
        result.reclaimedBytes += item.size;
        result.restorable.push_back({item.url, URL::fromPath("/nowhere/Trash" + item.url.path(), false)});
    }
    return result;
}

RestoreResult restore(Script& script, std::span<const TrashedEntry> entries) {
    script.note(QStringLiteral("put back %1").arg(entries.size()));
    script.waitWhileHeld(neverCancelled);
    RestoreResult result;
    int toFail = script.read(&Script::putBackFails);
    for (const TrashedEntry& entry : entries) {
        if (toFail > 0) {
            --toFail;
            result.failures.push_back({entry.original, S::restoreGoneFromTrash()});
            result.pending.push_back(entry);
        } else {
            ++result.restored;
        }
    }
    return result;
}

ModuleServices services(const std::shared_ptr<Script>& script) {
    ModuleServices fakes = ModuleServices::real();
    fakes.makeScanner = [script](ModuleKind kind) { return std::make_unique<FakeScanner>(kind, script); };
    fakes.clean = [script](std::span<const CleanableItem> items, const ProgressCallback& progress,
                           const CancellationCallback& isCancelled,
                           const TrashedCallback&) { return clean(*script, items, progress, isCancelled); };
    fakes.restore = [script](std::span<const TrashedEntry> entries) { return restore(*script, entries); };
    fakes.notify = [script](const std::string& title, const std::string&) {
        script->note(QStringLiteral("banner ") + QString::fromStdString(title));
    };
    fakes.requestNotifications = [script] { script->note(QStringLiteral("leave for banners")); };
    fakes.runningBundleIDs = [script] { return script->read(&Script::running); };
    fakes.tidyDock = [](const std::set<std::string>&) {};
    fakes.showInFileBrowser = [script](const URL& url) {
        script->note(QStringLiteral("show ") + QString::fromStdString(url.absoluteString()));
    };
    fakes.openAccessSettings = [script] { script->note(QStringLiteral("access")); };
    return fakes;
}

// As an earlier run would have left it.
void writeHistory() {
    const auto record = [](double day, const char* key, std::int64_t paths, std::int64_t bytes, bool restorable) {
        constexpr double secondsOfDay = 86'400;
        constexpr double march2026 = 9189.4;  // days from the first of January 2001, to half past nine
        CleanupRecord result{.id = UUID::random(),
                             .date = Date::fromReference((march2026 + day) * secondsOfDay),
                             .module = key,
                             .moduleKey = key,
                             .itemCount = paths,
                             .reclaimedBytes = bytes,
                             .entries = {}};
        if (restorable) result.entries.push_back({URL::fromPath("/nowhere/a"), URL::fromPath("/nowhere/Trash/a")});
        return result;
    };
    HistoryStore().save({record(14, "systemJunk", 34, 2'500'000'000, true),
                         record(9, "duplicates", 2, 25'000'000, true),
                         record(2, "emptyTrash", 3, 4'000'000'000, false)});
}

}  // namespace

struct Stage::Play {
    QTemporaryDir folder;
    std::shared_ptr<Script> script = std::make_shared<Script>();
    std::unique_ptr<AppModel> app;
};

Stage::Stage(History history) : play_(std::make_unique<Play>()) {
    const QByteArray folder = play_->folder.path().toUtf8();
    qputenv("HOME", folder);
    qputenv("XDG_DATA_HOME", folder + "/data");
    qputenv("XDG_CONFIG_HOME", folder + "/config");
    play_->script->folder = play_->folder.filePath(QStringLiteral("found")).toStdString();
    makeFiles(play_->script->folder);
    if (history == History::ofThree) writeHistory();
    play_->app = std::make_unique<AppModel>(services(play_->script));
}

Stage::~Stage() {
    letGo();
}

AppModel& Stage::app() {
    return *play_->app;
}

void Stage::scansGo(const QString& how) {
    play_->script->write(&Script::scans, how);
}

void Stage::cleansGo(const QString& how) {
    play_->script->write(&Script::cleans, how);
}

void Stage::hold() {
    play_->script->write(&Script::held, true);
}

void Stage::letGo() {
    play_->script->write(&Script::held, false);
}

void Stage::appsRun(const QString& identifiers) {
    std::set<std::string> running;
    for (const QString& name : identifiers.split(QChar(u' '), Qt::SkipEmptyParts))
        running.insert(name.toStdString());
    play_->script->write(&Script::running, std::move(running));
}

void Stage::putBackFails(int paths) {
    play_->script->write(&Script::putBackFails, paths);
}

void Stage::holdKey(int key) {
    const auto send = [this, key](QEvent::Type type, bool repeats) {
        QKeyEvent event(type, key, Qt::NoModifier, {}, repeats);
        QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &event);
        // What it began has its effect before the key repeats.
        settle();
        QCoreApplication::processEvents();
    };
    send(QEvent::KeyPress, false);
    for (int repetition = 0; repetition < 3; ++repetition) {
        send(QEvent::KeyRelease, true);
        send(QEvent::KeyPress, true);
    }
    send(QEvent::KeyRelease, false);
}

void Stage::settle() {
    play_->app->store()->services().background->drain();
}

void Stage::addRecord(const QString& module, int paths, qint64 bytes) {
    CleanResult result{.removedItems = paths, .reclaimedBytes = bytes};
    for (int path = 0; path < paths; ++path) {
        const std::string name = "/nowhere/" + std::to_string(path);
        result.restorable.push_back({URL::fromPath(name, false), URL::fromPath("/nowhere/Trash" + name, false)});
    }
    play_->app->history()->add(module.toStdString(), module.toStdString(), result);
}

void Stage::addRecordOfEmptiedTrash(qint64 bytes) {
    play_->app->history()->add("emptyTrash", std::string(CleanupRecord::emptyTrashKey),
                               {.removedItems = 3, .reclaimedBytes = bytes});
}

void Stage::clearHistory() {
    play_->app->history()->clear();
}

QStringList Stage::asked() const {
    return play_->script->read(&Script::asked);
}

void Stage::forget() {
    play_->script->write(&Script::asked, QStringList());
}

}  // namespace tavrin::test
