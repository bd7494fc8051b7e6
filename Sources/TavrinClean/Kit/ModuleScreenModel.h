// All that the screen of one module shows and does, over the flow behind it.
#pragma once

#include "TavrinClean/Kit/FailuresModel.h"
#include "TavrinClean/Kit/GroupsModel.h"
#include "TavrinClean/Kit/ModuleStore.h"
#include "TavrinClean/Kit/ResultsModel.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <atomic>
#include <cstdint>
#include <memory>

namespace tavrin {

class ItemFacts;
class ModuleViewModel;
struct Arrangement;
struct SelectionChange;

/// Made anew each time a module's screen appears, and gone with it: search, closed groups and opened rows begin afresh,
/// while the flow, its findings and its ticks live in the store.
///
///     ModuleScreenModel { store: App.store; moduleKey: "systemJunk" }
///
/// Both properties are set once; the screen is empty until they are.
class ModuleScreenModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(tavrin::ModuleStore* store READ store WRITE setStore NOTIFY storeChanged FINAL)
    /// The raw value of the module. One that names none leaves the screen empty.
    Q_PROPERTY(QString moduleKey READ moduleKey WRITE setModuleKey NOTIFY moduleKeyChanged FINAL)

    // The header and the banners.

    Q_PROPERTY(QString title READ title NOTIFY opened FINAL)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY opened FINAL)
    Q_PROPERTY(QString symbol READ symbol NOTIFY opened FINAL)
    /// The module's note, shown in every phase; empty for most.
    Q_PROPERTY(QString note READ note NOTIFY opened FINAL)
    /// That folders couldn't be read, only with results; empty otherwise.
    Q_PROPERTY(QString warning READ warning NOTIFY phaseChanged FINAL)

    // What stands below them.

    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged FINAL)
    /// Scanning or cleaning: the scan button is a stop button.
    Q_PROPERTY(bool busy READ busy NOTIFY phaseChanged FINAL)
    Q_PROPERTY(Layout layout READ layout NOTIFY opened FINAL)
    /// The list's `rows` is filled for the layout List, `groups` for the other two.
    Q_PROPERTY(tavrin::ResultsModel* rows READ rows NOTIFY opened FINAL)
    Q_PROPERTY(tavrin::GroupsModel* groups READ groups NOTIFY opened FINAL)

    // Scanning and cleaning.

    /// From 0 to 1; below 0 when no fraction is known.
    Q_PROPERTY(double fraction READ fraction NOTIFY progressChanged FINAL)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged FINAL)
    /// Empty when there is none.
    Q_PROPERTY(QString progressPath READ progressPath NOTIFY progressChanged FINAL)
    /// How many were found, as text; empty for none.
    Q_PROPERTY(QString progressFound READ progressFound NOTIFY progressChanged FINAL)

    // Results.

    /// All findings, whatever the search shows.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY itemsChanged FINAL)
    Q_PROPERTY(QString itemCountText READ itemCountText NOTIFY itemsChanged FINAL)
    /// Results without a finding: nothing to clean.
    Q_PROPERTY(bool nothingFound READ nothingFound NOTIFY phaseChanged FINAL)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged FINAL)
    /// The search shows no row.
    Q_PROPERTY(bool nothingMatches READ nothingMatches NOTIFY shownChanged FINAL)
    Q_PROPERTY(QStringList sortLabels READ sortLabels NOTIFY opened FINAL)
    Q_PROPERTY(int sortIndex READ sortIndex WRITE setSortIndex NOTIFY sortIndexChanged FINAL)

    // The footer.

    /// With results that are not empty.
    Q_PROPERTY(bool showsFooter READ showsFooter NOTIFY phaseChanged FINAL)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged FINAL)
    Q_PROPERTY(QString selectedCountText READ selectedCountText NOTIFY selectionChanged FINAL)
    Q_PROPERTY(QString selectedSizeText READ selectedSizeText NOTIFY selectionChanged FINAL)
    /// Something is ticked.
    Q_PROPERTY(bool canClean READ canClean NOTIFY selectionChanged FINAL)

    // The question before a clean.

    Q_PROPERTY(bool confirming READ confirming NOTIFY confirmingChanged FINAL)
    Q_PROPERTY(QString confirmMessage READ confirmMessage NOTIFY confirmingChanged FINAL)

    // After a clean.

    /// What was moved; empty when something failed and nothing was reclaimed.
    Q_PROPERTY(QString doneSummary READ doneSummary NOTIFY phaseChanged FINAL)
    Q_PROPERTY(bool doneWithFailures READ doneWithFailures NOTIFY phaseChanged FINAL)
    /// At least a byte went: the milder of the two pictures beside failures.
    Q_PROPERTY(bool doneReclaimed READ doneReclaimed NOTIFY phaseChanged FINAL)
    Q_PROPERTY(QString failuresTitle READ failuresTitle NOTIFY phaseChanged FINAL)
    Q_PROPERTY(tavrin::FailuresModel* failures READ failures CONSTANT FINAL)

    // After a scan that failed.

    Q_PROPERTY(QString errorText READ errorText NOTIFY phaseChanged FINAL)

  public:
    enum Phase {
        Idle,
        Scanning,
        Results,
        Cleaning,
        Done,
        Failed,
        NeedsAccess
    };
    Q_ENUM(Phase)
    enum Layout {
        List,
        Gallery,
        Languages
    };
    Q_ENUM(Layout)

    explicit ModuleScreenModel(QObject* parent = nullptr);
    ~ModuleScreenModel() override;

    Q_INVOKABLE void startScan();
    /// Scanning ends in Idle, cleaning in Done with what was done by then.
    Q_INVOKABLE void stop();

    /// Ticks or unticks one finding, by the role `itemId`.
    Q_INVOKABLE void toggle(const QString& itemId);
    /// The header's check button, by the role `groupId`: ticks the group, or unticks it when all that is shown of it is
    /// ticked. Never ticks a keeper.
    Q_INVOKABLE void toggleGroup(const QString& groupId);
    /// The list of languages: keeps a language that was to go, and the reverse.
    Q_INVOKABLE void toggleKept(const QString& groupId);
    /// Both reach every finding, not only those that the search shows. Keepers are never ticked.
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void selectNone();
    Q_INVOKABLE void toggleCollapsed(const QString& groupId);
    Q_INVOKABLE void toggleExpanded(const QString& itemId);

    /// Puts the question, a moment later where apps must be looked at. Nothing happens while nothing is ticked.
    Q_INVOKABLE void askToClean();
    Q_INVOKABLE void dismissClean();
    /// The answer: closes the question and cleans.
    Q_INVOKABLE void clean();

    /// Asks again which apps run. The screen does it by itself when it appears and when the number of findings changes.
    Q_INVOKABLE void refreshRunningApps();
    /// Shows a file, by the role `url`, in the system's file browser.
    Q_INVOKABLE void showInFinder(const QString& url);
    /// Opens the place where access is granted, as far as the system has one.
    Q_INVOKABLE void openAccessSettings();

    [[nodiscard]] ModuleStore* store() const { return store_; }
    void setStore(ModuleStore* store);
    [[nodiscard]] QString moduleKey() const { return moduleKey_; }
    void setModuleKey(const QString& key);

    [[nodiscard]] QString title() const;
    [[nodiscard]] QString subtitle() const;
    [[nodiscard]] QString symbol() const;
    [[nodiscard]] QString note() const;
    [[nodiscard]] QString warning() const;
    [[nodiscard]] Phase phase() const;
    [[nodiscard]] bool busy() const;
    [[nodiscard]] Layout layout() const;
    [[nodiscard]] ResultsModel* rows() const { return rows_.get(); }
    [[nodiscard]] GroupsModel* groups() const { return groups_.get(); }
    [[nodiscard]] double fraction() const;
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] QString progressPath() const;
    [[nodiscard]] QString progressFound() const;
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] QString itemCountText() const;
    [[nodiscard]] bool nothingFound() const;
    [[nodiscard]] QString searchText() const { return searchText_; }
    void setSearchText(const QString& text);
    [[nodiscard]] bool nothingMatches() const;
    [[nodiscard]] QStringList sortLabels() const;
    [[nodiscard]] int sortIndex() const;
    void setSortIndex(int index);
    [[nodiscard]] bool showsFooter() const;
    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] QString selectedCountText() const;
    [[nodiscard]] QString selectedSizeText() const;
    [[nodiscard]] bool canClean() const;
    [[nodiscard]] bool confirming() const { return confirming_; }
    [[nodiscard]] QString confirmMessage() const { return confirmMessage_; }
    [[nodiscard]] QString doneSummary() const;
    [[nodiscard]] bool doneWithFailures() const;
    [[nodiscard]] bool doneReclaimed() const;
    [[nodiscard]] QString failuresTitle() const;
    [[nodiscard]] FailuresModel* failures() { return &failures_; }
    [[nodiscard]] QString errorText() const;

  Q_SIGNALS:
    void storeChanged();
    void moduleKeyChanged();
    /// Store and module are known: everything has a value now.
    void opened();
    void phaseChanged();
    void progressChanged();
    void itemsChanged();
    void searchTextChanged();
    /// The rows follow another order or search, or they are others.
    void shownChanged();
    void sortIndexChanged();
    void selectionChanged();
    void confirmingChanged();

  private:
    void openWhenReady();
    void connectFlow();
    void flowPhaseChanged();
    void flowItemsChanged();
    void flowSelectionChanged(const SelectionChange& change);
    void showArrangement();
    void show(std::shared_ptr<const Arrangement> arrangement);
    void presentConfirmation(std::int64_t runningApps);

    QPointer<ModuleStore> store_;
    QString moduleKey_;
    QPointer<ModuleViewModel> flow_;
    std::unique_ptr<ItemFacts> facts_;
    std::unique_ptr<ResultsModel> rows_;
    std::unique_ptr<GroupsModel> groups_;
    FailuresModel failures_;
    std::shared_ptr<const Arrangement> shown_;
    QString searchText_;
    /// The number of the latest search. One that is no longer it isn't carried out, and dropped when it arrives.
    std::shared_ptr<std::atomic<std::uint64_t>> search_ = std::make_shared<std::atomic<std::uint64_t>>(0);
    /// A search is on its way.
    bool filtering_ = false;
    bool confirming_ = false;
    QString confirmMessage_;
};

}  // namespace tavrin
