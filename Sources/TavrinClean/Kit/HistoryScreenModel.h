// All that the history screen shows and does.
#pragma once

#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/HistoryRecordsModel.h"

#include <QObject>
#include <QPointer>
#include <optional>

namespace tavrin {

/// Made anew each time the screen appears; its message is gone with it.
///
///     HistoryScreenModel { history: App.history }
class HistoryScreenModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(tavrin::HistoryModel* history READ history WRITE setHistory NOTIFY historyChanged FINAL)
    Q_PROPERTY(tavrin::HistoryRecordsModel* records READ records CONSTANT FINAL)
    /// Bytes that were really freed, in a sentence.
    Q_PROPERTY(QString totalText READ totalText NOTIFY recordsChanged FINAL)
    /// The outcome of the last put back; empty before the first.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged FINAL)
    /// No record at all: the placeholder stands, and there is nothing to clear.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY recordsChanged FINAL)
    Q_PROPERTY(bool confirmingClear READ confirmingClear NOTIFY confirmingClearChanged FINAL)
    Q_PROPERTY(QString clearMessage READ clearMessage NOTIFY recordsChanged FINAL)

  public:
    explicit HistoryScreenModel(QObject* parent = nullptr);

    /// Puts a record back, by the role `recordId`. One that is being put back already is left alone.
    Q_INVOKABLE void putBack(const QString& recordId);
    Q_INVOKABLE void askToClear();
    Q_INVOKABLE void dismissClear();
    /// The answer: closes the question and forgets every record.
    Q_INVOKABLE void clear();

    [[nodiscard]] HistoryModel* history() const { return history_; }
    void setHistory(HistoryModel* history);
    [[nodiscard]] HistoryRecordsModel* records() { return &records_; }
    [[nodiscard]] QString totalText() const;
    [[nodiscard]] QString message() const { return message_; }
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] bool confirmingClear() const { return confirmingClear_; }
    [[nodiscard]] QString clearMessage() const;

  Q_SIGNALS:
    void historyChanged();
    void recordsChanged();
    void messageChanged();
    void confirmingClearChanged();

  private:
    void ended(const RestoreResult& result);
    void setRestoring(const std::optional<UUID>& id);
    void setMessage(const QString& message);

    QPointer<HistoryModel> history_;
    HistoryRecordsModel records_;
    std::optional<UUID> restoring_;
    QString message_;
    bool confirmingClear_ = false;
};

}  // namespace tavrin
