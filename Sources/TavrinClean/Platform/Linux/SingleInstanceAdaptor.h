// The face that a running program shows on the session bus.
#pragma once

#include "TavrinClean/Platform/Linux/ActivationToken.h"
#include "TavrinClean/Platform/SingleInstance.h"

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

namespace tavrin {

class SingleInstanceAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    explicit SingleInstanceAdaptor(SingleInstance* instance) : QDBusAbstractAdaptor(instance), instance_(instance) {}

  public Q_SLOTS:
    void Activate(const QVariantMap& platformData) {
        takeActivation(platformData);
        Q_EMIT instance_->activated();
    }

  private:
    SingleInstance* instance_;
};

}  // namespace tavrin
