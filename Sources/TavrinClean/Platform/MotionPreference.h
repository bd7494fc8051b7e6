// Whether the person wants less motion than usual.
#pragma once

#include <QObject>

namespace tavrin {

/// What the desktop's settings say, followed for as long as it lives. On the main thread.
///
/// Nobody is waited for: until the desktop has answered, and for good on one that has no such setting, motion is as
/// usual.
class MotionPreference : public QObject {
    Q_OBJECT

  public:
    explicit MotionPreference(QObject* parent = nullptr);

    [[nodiscard]] bool isReduced() const { return reduced_; }

  Q_SIGNALS:
    void reducedChanged(bool reduced);

  private:
    void setReduced(bool reduced);

    bool reduced_ = false;
};

}  // namespace tavrin
