#include "TavrinCore/Platform/FileReader.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

class OpenFile final : public FileReader {
  public:
    explicit OpenFile(Descriptor file) : file_(std::move(file)) {}

    std::optional<std::size_t> read(std::span<unsigned char> buffer) override {
        ssize_t count = -1;
        do {
            count = ::read(file_.number(), buffer.data(), buffer.size());
        } while (count < 0 && errno == EINTR);
        if (count < 0) return std::nullopt;
        return static_cast<std::size_t>(count);
    }

  private:
    Descriptor file_;
};

}  // namespace

std::unique_ptr<FileReader> FileReader::open(const URL& file, Expect expect) {
    Result<Descriptor> opened = openHarmless(file);
    if (!opened) return nullptr;
    if (expect == Expect::whole) (void)::posix_fadvise(opened->number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return std::make_unique<OpenFile>(std::move(*opened));
}

}  // namespace tavrin
