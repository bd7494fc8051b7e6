// What the views tell of a file beyond its name.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>

namespace tavrin {

/// Files.placeOf(row.url)
class Files : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// The path of a file that is named by the absolute form of its URL, safe to show in one line; empty for anything
    /// else.
    Q_INVOKABLE [[nodiscard]] static QString placeOf(const QString& url);
};

}  // namespace tavrin
