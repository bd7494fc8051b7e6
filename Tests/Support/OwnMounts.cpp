#include "Support/OwnMounts.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

namespace tavrin::test {
namespace {

bool writeTo(const char* path, const std::string& text) {
    std::ofstream stream(path);
    stream << text;
    stream.close();
    return stream.good();
}

bool unshareMounts() {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0) {
        if (::unshare(CLONE_NEWNS) != 0) return false;
    } else {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        const std::string users = std::to_string(user) + " " + std::to_string(user) + " 1";
        const std::string groups = std::to_string(group) + " " + std::to_string(group) + " 1";
        if (!writeTo("/proc/self/setgroups", "deny") || !writeTo("/proc/self/uid_map", users) ||
            !writeTo("/proc/self/gid_map", groups))
            return false;
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

void expectMounted(int result, const URL& where) {
    ASSERT_EQ(result, 0) << where.path() << ": " << std::strerror(errno);
}

[[noreturn]] void runInChild(const std::function<void()>& body) {
    try {
        if (unshareMounts()) {
            body();
        } else {
            // EINVAL is a bare chroot: its root is no mount point, so what is mounted below can't be kept from the rest
            // of the machine.
            ADD_FAILURE() << "no mount namespace: " << std::strerror(errno)
                          << (errno == EINVAL ? "; bind-mount the folder of the chroot onto itself first" : "");
        }
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
    std::cout.flush();
    std::fflush(nullptr);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

void withOwnMounts(const std::function<void()>& body) {
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0) << std::strerror(errno);
    if (child == 0) runInChild(body);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "see the child's own failures above";
}

void mountTmpfs(const URL& folder, unsigned megabytes) {
    const std::string options = "mode=0755,size=" + std::to_string(megabytes) + "m";
    expectMounted(::mount("tmpfs", folder.path().c_str(), "tmpfs", 0, options.c_str()), folder);
}

void mountStalled(const URL& folder) {
    // Open to the end of the process: once it is closed, every question gets an error for an answer.
    const int device = ::open("/dev/fuse", O_RDWR | O_CLOEXEC);
    ASSERT_GE(device, 0) << std::strerror(errno);
    const std::string options = "rootmode=40000,fd=" + std::to_string(device) +
                                ",user_id=" + std::to_string(::geteuid()) + ",group_id=" + std::to_string(::getegid());
    expectMounted(::mount("nobody", folder.path().c_str(), "fuse.stalled", MS_NOSUID | MS_NODEV, options.c_str()),
                  folder);
    ::alarm(60);
}

void mountBind(const URL& source, const URL& target) {
    expectMounted(::mount(source.path().c_str(), target.path().c_str(), nullptr, MS_BIND, nullptr), target);
}

void makeNoatime(const URL& mountPoint) {
    expectMounted(::mount(nullptr, mountPoint.path().c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_NOATIME, nullptr),
                  mountPoint);
}

void makeReadOnly(const URL& mountPoint) {
    expectMounted(::mount(nullptr, mountPoint.path().c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr),
                  mountPoint);
}

}  // namespace tavrin::test
