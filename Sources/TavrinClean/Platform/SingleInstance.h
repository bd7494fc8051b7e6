// One window for each person: a second start brings the first one's window to the front.
#pragma once

#include <QObject>

namespace tavrin {

/// Lives as long as the program, on the main thread.
///
/// The other one may be out of reach: in another session of the same person, or where the desktop offers no way for
/// programs to find one another. A second start ends there too, since each would write its own records of cleans over
/// those of the other. Where not even that can be found out, it counts as the first.
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
        /// There is another one, and it doesn't answer or can't be reached.
        otherIsStuck,
    };

    explicit SingleInstance(QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Claims to be the one, or hands over to it. Takes some milliseconds, at most a few seconds where the other one is
    /// stuck.
    [[nodiscard]] Start claim();

  Q_SIGNALS:
    /// Somebody started the program again.
    void activated();

  private:
    [[nodiscard]] Start claimName();
    [[nodiscard]] bool claimHistory();

    int historyFolder_ = -1;
};

}  // namespace tavrin
