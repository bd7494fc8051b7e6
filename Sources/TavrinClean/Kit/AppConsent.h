// Whether the user has accepted the terms. Nothing else of the program starts before that.
#pragma once

#include <QObject>
#include <QString>

namespace tavrin {

/// Kept in the program's settings, an ini file of the user's. A file that can't be read, or holds no such number, means
/// that nothing was accepted: the question is asked again, and that is all that a damaged file does.
class AppConsent : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool accepted READ accepted NOTIFY acceptedChanged FINAL)

  public:
    /// The version of the terms. Raising it has every user accept again.
    static constexpr int currentVersion = 1;

    explicit AppConsent(QObject* parent = nullptr);
    explicit AppConsent(QString settingsFile, QObject* parent = nullptr);

    [[nodiscard]] bool accepted() const { return acceptedVersion_ >= currentVersion; }
    /// Writes the version and the date. A disk that refuses has the question asked again at the next start.
    Q_INVOKABLE void accept();

    /// $XDG_CONFIG_HOME/tavrin-clean/settings.ini, or what stands for it on this system.
    [[nodiscard]] static QString defaultSettingsFile();

  Q_SIGNALS:
    void acceptedChanged();

  private:
    QString settingsFile_;
    int acceptedVersion_ = 0;
};

}  // namespace tavrin
