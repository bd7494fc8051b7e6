#define _GNU_SOURCE
#include "WalkFloor.h"

#include <dirent.h>
#include <fcntl.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static long long measure(int folder) {
    char buffer[64 * 1024];
    long long total = 0;
    for (ssize_t count; (count = getdents64(folder, buffer, sizeof buffer)) > 0;) {
        for (ssize_t at = 0; at < count;) {
            const struct dirent64* entry = (const struct dirent64*)(buffer + at);
            at += entry->d_reclen;
            if (entry->d_type == DT_REG) {
                struct statx status;
                if (statx(folder, entry->d_name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC,
                          STATX_TYPE | STATX_SIZE | STATX_BLOCKS, &status) == 0)
                    total += (long long)status.stx_blocks * 512;
            } else if (entry->d_type == DT_DIR && strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0) {
                const int below = openat(folder, entry->d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
                if (below < 0) continue;
                total += measure(below);
                close(below);
            }
        }
    }
    return total;
}

long long walkFloor(const char* path) {
    const int folder = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return -1;
    const long long total = measure(folder);
    close(folder);
    return total;
}
