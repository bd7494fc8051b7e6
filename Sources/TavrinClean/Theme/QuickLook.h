// The preview: one file at a time, looked at without opening it.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tavrin {

class URL;

/// What the preview tells of a file.
struct PreviewFacts {
    QString name;
    /// The first 64 KiB of a text, with what can't be shown replaced; empty for everything else.
    QString text;
    bool isText = false;
    bool isDirectory = false;
    /// Nil when the file can't be asked.
    std::optional<std::int64_t> bytes;
    /// Day and time; empty where the file system keeps none.
    QString created;
    QString modified;
};

/// Asks the disk; never throws, and waits for nothing but the disk. A missing file has a name and nothing else.
[[nodiscard]] PreviewFacts previewFacts(const URL& url);

/// The one preview of the program. A list calls QuickLook.show(url), a QuickLookSheet in the window shows what stands
/// here.
class QuickLook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The file that is looked at, in the absolute form of its URL; empty while nothing is.
    Q_PROPERTY(QString url READ url NOTIFY urlChanged FINAL)
    /// What is told of it arrives a little later, from the background; until then everything but the name is empty.
    Q_PROPERTY(QString name READ name NOTIFY factsChanged FINAL)
    Q_PROPERTY(QString text READ text NOTIFY factsChanged FINAL)
    Q_PROPERTY(bool isText READ isText NOTIFY factsChanged FINAL)
    Q_PROPERTY(QString size READ size NOTIFY factsChanged FINAL)
    Q_PROPERTY(QString created READ created NOTIFY factsChanged FINAL)
    Q_PROPERTY(QString modified READ modified NOTIFY factsChanged FINAL)
    /// Size and date in one line, as far as they are known.
    Q_PROPERTY(QString summary READ summary NOTIFY factsChanged FINAL)

  public:
    explicit QuickLook(QObject* parent = nullptr);
    ~QuickLook() override;

    Q_INVOKABLE void show(const QString& url);
    Q_INVOKABLE void close();

    [[nodiscard]] QString url() const { return url_; }
    [[nodiscard]] QString name() const { return facts_.name; }
    [[nodiscard]] QString text() const { return facts_.text; }
    [[nodiscard]] bool isText() const { return facts_.isText; }
    [[nodiscard]] QString size() const;
    [[nodiscard]] QString created() const { return facts_.created; }
    [[nodiscard]] QString modified() const { return facts_.modified; }
    [[nodiscard]] QString summary() const;

  Q_SIGNALS:
    void urlChanged();
    void factsChanged();

  private:
    struct Address;

    void receive(const QString& url, PreviewFacts facts);

    QString url_;
    PreviewFacts facts_;
    /// Where the background sends what it found out: it may still be reading when the preview is gone.
    std::shared_ptr<Address> address_;
};

}  // namespace tavrin
