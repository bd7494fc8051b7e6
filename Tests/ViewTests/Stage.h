// Behind the screens, for tests: the real models of the program, fed by scanners and cleaners that do as they are told.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

namespace tavrin {
class AppModel;
}

namespace tavrin::test {

/// One for each test program, made after the application object and before the first engine. Keeps settings, history
/// and the files that are found in a folder of its own. In QML tests: `stage`.
class Stage : public QObject {
    Q_OBJECT

  public:
    /// With a history of three cleans in March 2026, or none.
    enum class History {
        empty,
        ofThree,
    };

    explicit Stage(History history = History::empty);
    ~Stage() override;

    [[nodiscard]] AppModel& app();

    /// How the next scans of every module go: "findings" (what findingsFor() of the module lists), "empty", "denied",
    /// "broken", "blocked" (findings, and two folders that couldn't be read), "many" (100,000 findings).
    Q_INVOKABLE void scansGo(const QString& how);
    /// How the next cleans go: "well", "partly" (the first three paths fail) or "badly" (all of them fail).
    Q_INVOKABLE void cleansGo(const QString& how);
    /// Scans and cleans report their progress and then wait, until they are let go or stopped.
    Q_INVOKABLE void hold();
    Q_INVOKABLE void letGo();
    /// Which apps run: identifiers, lower-cased, parted by blanks.
    Q_INVOKABLE void appsRun(const QString& identifiers);
    /// What the next put back leaves behind.
    Q_INVOKABLE void putBackFails(int paths);

    /// Presses a key, holds it for three repetitions, and lets it go.
    Q_INVOKABLE void holdKey(int key);

    /// Waits until nothing is done in the background any more.
    Q_INVOKABLE void settle();
    /// A record in the history, as a clean of that module would leave it.
    Q_INVOKABLE void addRecord(const QString& module, int paths, qint64 bytes);
    Q_INVOKABLE void addRecordOfEmptiedTrash(qint64 bytes);
    Q_INVOKABLE void clearHistory();

    /// What was asked since the beginning, newest last, one line each: "clean 3", "banner Title", "show file:///…",
    /// "access".
    Q_INVOKABLE [[nodiscard]] QStringList asked() const;
    Q_INVOKABLE void forget();

  private:
    struct Play;
    std::unique_ptr<Play> play_;
};

}  // namespace tavrin::test
