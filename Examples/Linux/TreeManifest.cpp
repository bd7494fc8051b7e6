// Each entry is opened by its name in its folder's descriptor, so a path may be as long as it likes. A chain of folders
// holds one descriptor each while it is walked.
#include "TreeManifest.h"

#include "TerminalText.h"

#include <dirent.h>
#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace tavrin::example {
namespace {

[[noreturn]] void fail(const char* what, const std::string& path) {
    throw std::runtime_error(std::string(what) + " " + terminalText(path) + ": " + std::strerror(errno));
}

/// A descriptor that closes itself.
class Opened {
  public:
    Opened(int folder, const std::string& name, int flags, const std::string& path)
        : descriptor_(::openat(folder, name.c_str(), flags | O_RDONLY | O_NOFOLLOW | O_CLOEXEC)) {
        if (descriptor_ < 0) fail("open", path);
    }
    ~Opened() { ::close(descriptor_); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    [[nodiscard]] int get() const { return descriptor_; }

  private:
    int descriptor_;
};

std::string hexadecimal(const std::string& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4U];
        text += kDigits[static_cast<unsigned char>(byte) & 15U];
    }
    return text;
}

std::string sha256OfContents(int file, const std::string& path) {
    const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> digest(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr);
    static thread_local std::array<char, std::size_t{1} << 18U> part;
    while (true) {
        const ssize_t count = ::read(file, part.data(), part.size());
        if (count < 0) fail("read", path);
        if (count == 0) break;
        EVP_DigestUpdate(digest.get(), part.data(), static_cast<std::size_t>(count));
    }
    std::string sum(EVP_MAX_MD_SIZE, '\0');
    unsigned length = 0;
    EVP_DigestFinal_ex(digest.get(), reinterpret_cast<unsigned char*>(sum.data()), &length);
    sum.resize(length);
    return hexadecimal(sum);
}

std::string attributesOf(int descriptor, const std::string& path) {
    std::string names(std::size_t{64} * 1024, '\0');
    const ssize_t length = ::flistxattr(descriptor, names.data(), names.size());
    if (length < 0 && errno == ENOTSUP) return {};
    if (length < 0) fail("list the attributes of", path);
    names.resize(static_cast<std::size_t>(length));

    std::set<std::string> attributes;
    for (std::size_t i = 0; i < names.size(); i += std::strlen(names.c_str() + i) + 1) {
        const char* name = names.c_str() + i;
        std::string value(std::size_t{64} * 1024, '\0');
        const ssize_t size = ::fgetxattr(descriptor, name, value.data(), value.size());
        if (size < 0) fail("read an attribute of", path);
        value.resize(static_cast<std::size_t>(size));
        attributes.insert(" " + terminalText(name) + "=" + hexadecimal(value));
    }
    std::string text;
    for (const std::string& attribute : attributes)
        text += attribute;
    return text;
}

std::string targetOf(int folder, const std::string& name, const std::string& path) {
    std::string target(4096, '\0');
    const ssize_t length = ::readlinkat(folder, name.c_str(), target.data(), target.size());
    if (length < 0) fail("read the link", path);
    target.resize(static_cast<std::size_t>(length));
    return target;
}

std::string factsOf(int folder, const std::string& name, const struct stat& status, const std::string& path) {
    std::array<char, 16> mode{};
    std::snprintf(mode.data(), mode.size(), " %04o", status.st_mode & 07777U);
    if (S_ISLNK(status.st_mode)) return "link to " + hexadecimal(targetOf(folder, name, path));
    if (S_ISREG(status.st_mode)) {
        const Opened file(folder, name, O_NONBLOCK, path);
        return std::string("file") + mode.data() + " of " + std::to_string(status.st_size) + " bytes " +
               sha256OfContents(file.get(), path) + attributesOf(file.get(), path);
    }
    if (S_ISDIR(status.st_mode)) {
        const Opened opened(folder, name, O_DIRECTORY, path);
        return std::string("folder") + mode.data() + attributesOf(opened.get(), path);
    }
    return "kind " + std::to_string(status.st_mode & S_IFMT) + mode.data();
}

class Walk {
  public:
    explicit Walk(const std::set<std::string>& leftOut) : leftOut_(leftOut) {}

    void visit(int folder, const std::string& name, const std::string& path) {
        struct stat status {};
        if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) fail("look at", path);
        TreeEntry& entry = manifest[path];
        entry.isFolder = S_ISDIR(status.st_mode);
        entry.facts = factsOf(folder, name, status, path);
        entry.modified = status.st_mtim.tv_sec * std::int64_t{1'000'000'000} + status.st_mtim.tv_nsec;
        entry.identity = {status.st_dev, status.st_ino};
        if (entry.isFolder) visitChildren(folder, name, path);
    }

    TreeManifest manifest;

  private:
    void visitChildren(int folder, const std::string& name, const std::string& path) {
        const Opened opened(folder, name, O_DIRECTORY, path);
        for (const std::string& child : namesIn(opened.get(), path)) {
            std::string childPath = path;
            if (!path.empty()) childPath.push_back('/');
            childPath.append(child);
            if (!leftOut_.contains(childPath)) visit(opened.get(), child, childPath);
        }
    }

    static std::vector<std::string> namesIn(int folder, const std::string& path) {
        const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(::dup(folder)), ::closedir);
        if (stream == nullptr) fail("list", path);
        std::vector<std::string> names;
        errno = 0;
        while (const dirent* entry = ::readdir(stream.get()))
            if (const std::string_view name = entry->d_name; name != "." && name != "..") names.emplace_back(name);
        if (errno != 0) fail("list", path);
        return names;
    }

    const std::set<std::string>& leftOut_;
};

}  // namespace

TreeManifest manifestOf(const URL& root, const std::set<std::string>& leftOut) {
    Walk walk(leftOut);
    walk.visit(AT_FDCWD, root.path(), "");
    return std::move(walk.manifest);
}

}  // namespace tavrin::example
