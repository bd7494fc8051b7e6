#include "SampleTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavrin::benchmarks {
namespace {

namespace fs = std::filesystem;

constexpr int kFilesInEach = 10;
constexpr int kFoldersInEach = 8;

void makeFile(int folder, const std::string& name, const std::string& contents) {
    const int file = ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, contents.data(), contents.size()) < 0) throw std::runtime_error("no room: " + name);
    ::close(file);
}

void fill(const fs::path& path, int number, const std::string& contents) {
    fs::create_directories(path);
    const int folder = ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int file = 0; file < kFilesInEach; ++file)
        makeFile(folder, "cached-data-" + std::to_string(number * kFilesInEach + file) + ".bin", contents);
    ::close(folder);
}

}  // namespace

void makeSampleTree(const fs::path& root, int folders, std::size_t fileBytes) {
    const fs::path whole = root.native() + ".whole";
    if (fs::exists(whole)) return;
    fs::remove_all(root);
    const std::string contents(fileBytes, 'x');
    std::vector<fs::path> paths{root};
    for (int number = 0; number < folders; ++number) {
        const auto index = static_cast<std::size_t>(number);
        if (number > 0)
            paths.push_back(paths[(index - 1) / kFoldersInEach] / ("com.example.folder-" + std::to_string(number)));
        fill(paths.back(), number, contents);
    }
    const int folder = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::syncfs(folder);
    ::close(folder);
    std::ofstream(whole) << folders << '\n';
}

}  // namespace tavrin::benchmarks
