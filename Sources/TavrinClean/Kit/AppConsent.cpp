#include "TavrinClean/Kit/AppConsent.h"

#include <QDateTime>
#include <QSettings>
#include <QStandardPaths>
#include <utility>

namespace tavrin {
namespace {

const QString& versionKey() {
    static const QString key = QStringLiteral("consentAcceptedVersion");
    return key;
}

/// 0 for a file that is missing, can't be read, or holds anything but a whole number there.
int storedVersion(const QString& file) {
    const QSettings settings(file, QSettings::IniFormat);
    if (settings.status() != QSettings::NoError) return 0;
    bool isNumber = false;
    const int version = settings.value(versionKey()).toString().toInt(&isNumber);
    return isNumber ? version : 0;
}

}  // namespace

AppConsent::AppConsent(QObject* parent) : AppConsent(defaultSettingsFile(), parent) {}

AppConsent::AppConsent(QString settingsFile, QObject* parent)
    : QObject(parent), settingsFile_(std::move(settingsFile)), acceptedVersion_(storedVersion(settingsFile_)) {}

QString AppConsent::defaultSettingsFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tavrin-clean/settings.ini");
}

void AppConsent::accept() {
    QSettings settings(settingsFile_, QSettings::IniFormat);
    settings.setValue(versionKey(), currentVersion);
    settings.setValue(QStringLiteral("consentAcceptedDate"),
                      QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    settings.sync();
    const bool was = accepted();
    acceptedVersion_ = currentVersion;
    if (!was) Q_EMIT acceptedChanged();
}

}  // namespace tavrin
