// What QML knows of the screens.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QStringList>

namespace tavrin {

/// Screens.titleOf("history"). A screen is named by its key; an unknown key has empty texts.
class Screens : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The keys of what stands at the top of the sidebar, and of what stands below the modules of its two sections.
    Q_PROPERTY(QStringList leading READ leading CONSTANT FINAL)
    Q_PROPERTY(QString belowCleanup READ belowCleanup CONSTANT FINAL)
    Q_PROPERTY(QString belowSpace READ belowSpace CONSTANT FINAL)
    /// What is shown while nothing is selected.
    Q_PROPERTY(QString first READ first CONSTANT FINAL)

  public:
    using QObject::QObject;

    [[nodiscard]] static QStringList leading();
    [[nodiscard]] static QString belowCleanup();
    [[nodiscard]] static QString belowSpace();
    [[nodiscard]] static QString first();

    Q_INVOKABLE [[nodiscard]] static QString titleOf(const QString& key);
    Q_INVOKABLE [[nodiscard]] static QString subtitleOf(const QString& key);
    Q_INVOKABLE [[nodiscard]] static QString symbolOf(const QString& key);
    /// Whether the key names a module.
    Q_INVOKABLE [[nodiscard]] static bool isModule(const QString& key);
};

}  // namespace tavrin
