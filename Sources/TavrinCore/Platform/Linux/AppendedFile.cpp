#include "TavrinCore/Platform/AppendedFile.h"

#include "TavrinCore/Platform/Linux/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace tavrin {
namespace {

class LinuxAppendedFile final : public AppendedFile {
  public:
    explicit LinuxAppendedFile(Descriptor file) : file_(std::move(file)) {}

    bool append(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t count = ::write(file_.number(), bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    void sync() override { ::fdatasync(file_.number()); }

  private:
    Descriptor file_;
};

}  // namespace

std::unique_ptr<AppendedFile> AppendedFile::make(const URL& url, unsigned mode) {
    Descriptor file(::open(url.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, mode));
    return file.isOpen() ? std::make_unique<LinuxAppendedFile>(std::move(file)) : nullptr;
}

}  // namespace tavrin
