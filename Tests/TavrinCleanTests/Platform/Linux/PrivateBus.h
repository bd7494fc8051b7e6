// A message bus of the tests' own.
#pragma once

#include <QByteArray>
#include <QProcess>

namespace tavrin::test {

/// A program connects to its bus once, so there is one for all tests that run in a process. It ends with it.
class PrivateBus {
  public:
    /// For DBUS_SESSION_BUS_ADDRESS. Started at the first call, which needs an application object; empty where it can't
    /// be.
    [[nodiscard]] static const QByteArray& address();

    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

  private:
    PrivateBus();

    QProcess daemon_;
    QByteArray address_;
};

}  // namespace tavrin::test
