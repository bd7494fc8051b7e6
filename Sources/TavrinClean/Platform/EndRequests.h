// The system's own ways to ask a program to end: a session that closes, a terminal in which somebody presses Ctrl+C.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace tavrin {

/// Lives as long as the program, once, on the main thread. Without it such a request ends the process on the spot, and
/// what a clean has moved by then stands in no history.
///
/// The second request of a kind ends the process as if this weren't there, so that nobody is at the mercy of a program
/// that doesn't end. What whoever started the program has had ignored stays so.
class EndRequests : public QObject {
    Q_OBJECT

  public:
    explicit EndRequests(QObject* parent = nullptr);
    ~EndRequests() override;

  Q_SIGNALS:
    /// Somebody wants the program to end.
    void asked();

  private:
    QSocketNotifier* told_ = nullptr;
};

}  // namespace tavrin
