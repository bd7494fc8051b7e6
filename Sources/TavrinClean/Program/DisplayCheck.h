// What happens where there is no display: one sentence, and an end that a script can tell.
#pragma once

namespace tavrin {

/// While it lives, a toolkit that finds no display to start on ends the program with the exit code 1 and one sentence
/// on the standard error, instead of its own diagnosis and an abort. It stands around the making of the application
/// object, in the main thread, and nowhere else: any other fatal message ends the program as ever.
class DisplayCheck {
  public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
};

}  // namespace tavrin
