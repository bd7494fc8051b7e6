// One window for each person: a second start brings the first one's window to the front.
#pragma once

#include <QObject>

namespace tavrin {

/// Lives as long as the program, on the main thread. Where the desktop offers no way for programs to find one another,
/// each start counts as the first.
///
/// A start for another home folder is a program of its own: somebody who tries the program on sample files must not be
/// shown the window on the real ones.
class SingleInstance : public QObject {
    Q_OBJECT

  public:
    enum class Start {
        /// Go on and open the window.
        first,
        /// The other one has come to the front; nothing is left to do.
        handedOver,
        /// There is another one, and it doesn't answer.
        otherIsStuck,
    };

    explicit SingleInstance(QObject* parent = nullptr);

    /// Claims to be the one, or hands over to it. Takes some milliseconds, at most a few seconds where the other one is
    /// stuck.
    [[nodiscard]] Start claim();

  Q_SIGNALS:
    /// Somebody started the program again.
    void activated();
};

}  // namespace tavrin
