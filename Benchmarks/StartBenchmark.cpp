// What it costs to open the window, and to leave it open: the time from the start of the process to the first painted
// frame, which is the bare ground, and to the first one with a screen on it; the memory it holds by then, and the
// processor time while nothing happens; each beside an empty window's.
//
// Both run without a display, on the software renderer, which is what a machine without a graphics card gets. The home
// is an empty folder, so that the window opens as for a new user; the consent is given beforehand in a second run.
#include "Measuring.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using tavrin::benchmarks::note;
using tavrin::benchmarks::report;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 15;
constexpr std::chrono::seconds kSettle{2};
constexpr std::chrono::seconds kRest{5};
constexpr int kMostWaitMilliseconds = 20'000;

/// A program that was started, with the reading end of its standard error. Killed at the end.
class Started {
  public:
    explicit Started(const std::vector<std::string>& command) : begin_(Clock::now()) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) return;
        log_ = ends[0];
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
        std::vector<char*> arguments;
        for (const std::string& argument : command)
            arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        if (::posix_spawn(&pid_, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0) pid_ = 0;
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
    }
    ~Started() {
        if (log_ >= 0) ::close(log_);
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;

    /// Seconds from the start until it says `milestone`; nothing when it doesn't.
    [[nodiscard]] std::optional<double> timeTo(std::string_view milestone) {
        pollfd wait{.fd = log_, .events = POLLIN, .revents = 0};
        while (heard_.find(milestone) == std::string::npos) {
            char bytes[512];
            const ssize_t count = ::poll(&wait, 1, kMostWaitMilliseconds) > 0 ? ::read(log_, bytes, sizeof bytes) : 0;
            if (count <= 0) return std::nullopt;
            heard_.append(bytes, static_cast<std::size_t>(count));
        }
        return std::chrono::duration<double>(Clock::now() - begin_).count();
    }

    [[nodiscard]] double residentMiB() const {
        std::ifstream status("/proc/" + std::to_string(pid_) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
        }
        return 0;
    }

    /// User and system, in seconds.
    [[nodiscard]] double processor() const {
        std::ifstream stat("/proc/" + std::to_string(pid_) + "/stat");
        std::string text;
        std::getline(stat, text);
        // The name stands in brackets and may hold anything; utime and stime are the 12th and 13th field behind it.
        std::size_t at = text.rfind(')');
        for (int field = 0; field < 12 && at != std::string::npos; ++field)
            at = text.find(' ', at + 1);
        if (at == std::string::npos) return 0;
        char* rest = nullptr;
        const double user = std::strtod(text.c_str() + at, &rest);
        return (user + std::strtod(rest, nullptr)) / static_cast<double>(::sysconf(_SC_CLK_TCK));
    }

  private:
    Clock::time_point begin_;
    pid_t pid_ = 0;
    int log_ = -1;
    std::string heard_;
};

struct Figures {
    std::string name;
    std::vector<std::string> command;
    bool isProgram = true;
    /// The gem on the screen of the terms pulses for as long as it is seen.
    const char* restTarget = "";
    double firstFrame = 1e9;
    double firstScreen = 1e9;
    double residentMiB = 0;
    double restProcessor = 0;
};

bool measureStart(Figures& figures) {
    Started program(figures.command);
    const std::optional<double> frame = program.timeTo("first frame");
    if (!frame) return false;
    figures.firstFrame = std::min(figures.firstFrame, *frame);
    if (!figures.isProgram) return true;
    const std::optional<double> screen = program.timeTo("first screen");
    if (screen) figures.firstScreen = std::min(figures.firstScreen, *screen);
    return screen.has_value();
}

bool measureRest(Figures& figures) {
    Started program(figures.command);
    if (!program.timeTo(figures.isProgram ? "first screen" : "first frame")) return false;
    std::this_thread::sleep_for(kSettle);
    figures.residentMiB = program.residentMiB();
    const double before = program.processor();
    std::this_thread::sleep_for(kRest);
    figures.restProcessor = program.processor() - before;
    return true;
}

void print(const Figures& figures, const Figures& empty) {
    report(figures.name + ": to the first frame", figures.firstFrame * 1e3, "ms");
    if (figures.isProgram) {
        report(figures.name + " / empty window, to the first frame", figures.firstFrame / empty.firstFrame, "ratio",
               "<= 1.50");
        report(figures.name + ": to the first screen", figures.firstScreen * 1e3, "ms");
    }
    report(figures.name + ": resident", figures.residentMiB, "MiB", figures.isProgram ? "<= 160" : "");
    report(figures.name + ": processor in 5 s at rest", figures.restProcessor * 1e3, "ms", figures.restTarget);
}

/// A new user's home, or one who has accepted the terms.
void makeHome(const fs::path& home, bool accepted) {
    fs::remove_all(home);
    fs::create_directories(home / ".config/tavrin-clean");
    if (accepted) std::ofstream(home / ".config/tavrin-clean/settings.ini") << "[General]\nconsentAcceptedVersion=1\n";
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "DBUS_SESSION_BUS_ADDRESS"})
        ::unsetenv(variable);
    ::setenv("HOME", home.c_str(), 1);
}

}  // namespace

int main(int /*argc*/, char** argv) {
    const fs::path here = fs::absolute(argv[0]).parent_path();
    const fs::path program = here.parent_path() / "Sources/TavrinClean/Program/tavrin-clean";
    const fs::path home = fs::absolute("start-home");
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_LOGGING_RULES", "tavrin.start.debug=true", 1);
    ::setenv("LANGUAGE", "en", 1);

    std::vector<Figures> all{{"empty window", {(here / "EmptyWindow").string(), "1120", "740"}, false},
                             {"new user", {program.string()}},
                             {"accepted", {program.string()}, true, "0"}};
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            makeHome(home, i == 2);
            if (!measureStart(all[i])) {
                note(all[i].name + " didn't paint a frame");
                return 1;
            }
        }
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        makeHome(home, i == 2);
        if (!measureRest(all[i])) return 1;
        print(all[i], all[0]);
    }
    fs::remove_all(home);
}
