// A little world on the disk for one test: a folder of its own, gone with all that lies in it when the test ends.
//
// It lies below the build folder. Where the cleaner would refuse that place (a clone below /tmp), or where it can't be
// reached without root's rights, it lies in ~/.cache instead.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavrin::test {

class TestFolder {
  public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] const URL& url() const { return url_; }
    [[nodiscard]] const std::string& path() const { return url_.path(); }
    /// A location below; nothing is made.
    [[nodiscard]] URL operator/(std::string_view relative) const { return url_.appendingPathComponent(relative); }

    /// Each makes what is missing above it and gives the location. They fail the test when they can't.
    URL folder(std::string_view relative) const;
    URL file(std::string_view relative, std::string_view contents = "contents") const;
    /// A file of `size` bytes that really occupy the disk.
    URL fileOfSize(std::string_view relative, std::size_t size) const;
    URL link(std::string_view relative, std::string_view target) const;

  private:
    URL url_;
};

/// The bytes of a file; fails the test when it can't be read.
[[nodiscard]] std::string contentsOf(const URL& file);
/// Whether anything bears that name; links are not followed.
[[nodiscard]] bool somethingAt(const URL& url);
void setMode(const URL& url, unsigned mode);
/// Of a file, a folder, or a link itself.
void setTimes(const URL& url, Date accessed, Date modified);
/// A FIFO would block whoever opens it.
void makeFifo(const URL& url);

/// Sets an environment variable (or takes it away, with nullptr) for as long as this lives.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    std::string name_;
    std::string before_;
    bool wasSet_;
};

}  // namespace tavrin::test
