// The desktop's settings, as its portal hands them out.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariant>

namespace tavrin {

/// Asks once for all settings of some namespaces and then listens for changes. Waits for nobody; where no bus runs or
/// nobody serves the portal, it stays silent.
class SettingsPortal : public QObject {
    Q_OBJECT

  public:
    explicit SettingsPortal(const QStringList& namespaces, QObject* parent = nullptr);

  Q_SIGNALS:
    /// For each setting when the answer comes, and for each that changes later, of whatever namespace.
    void told(const QString& space, const QString& key, const QVariant& value);

  private Q_SLOTS:
    void changed(const QDBusMessage& signal);

  private:
    void ask(const QStringList& namespaces);
};

}  // namespace tavrin
