#define _GNU_SOURCE
#include "TrashFloor.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static const unsigned kMask = STATX_TYPE | STATX_MODE | STATX_UID | STATX_GID | STATX_INO | STATX_MNT_ID;

static int status(int folder, const char* name, int flags) {
    struct statx result;
    return statx(folder, name, flags | AT_NO_AUTOMOUNT, kMask, &result);
}

static int openFolder(int folder, const char* name) {
    return openat(folder, name, O_PATH | O_DIRECTORY | O_CLOEXEC);
}

static int moveOne(const char* folder, const char* trash, int number) {
    char path[PATH_MAX], name[32], note[64], text[PATH_MAX], real[PATH_MAX], link[64];
    snprintf(name, sizeof name, "%d", number);
    snprintf(path, sizeof path, "%s/%s", folder, name);
    snprintf(note, sizeof note, "%s.trashinfo", name);
    const int length =
        snprintf(text, sizeof text, "[Trash Info]\nPath=%.3000s\nDeletionDate=2026-01-01T00:00:00\n", path);

    // Held: there, its folder, itself, where they really lie, how big it is.
    int failed = status(AT_FDCWD, path, 0);
    const int parent = openFolder(AT_FDCWD, folder);
    const int item = openat(parent, name, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    failed |= status(parent, "", AT_EMPTY_PATH) | status(item, "", AT_EMPTY_PATH);
    snprintf(link, sizeof link, "/proc/self/fd/%d", parent);
    failed |= readlink(link, real, sizeof real) < 0;
    failed |= status(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW);

    // The Trash, opened anew for each item: others may empty it or take it away at any time.
    const int root = openFolder(AT_FDCWD, trash);
    const int info = openFolder(root, "info");
    const int files = openFolder(root, "files");
    failed |= status(root, "", AT_EMPTY_PATH) | status(info, "", AT_EMPTY_PATH) | status(files, "", AT_EMPTY_PATH);

    const int file = openat(info, note, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    failed |= write(file, text, (size_t)length) != length;
    failed |= sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
    failed |= close(file);

    // Checked right before, moved, checked right after.
    const int now = openFolder(AT_FDCWD, folder);
    failed |= status(now, "", AT_EMPTY_PATH) | status(parent, name, AT_SYMLINK_NOFOLLOW);
    failed |= renameat2(parent, name, files, name, RENAME_NOREPLACE);
    failed |= status(files, name, AT_SYMLINK_NOFOLLOW);
    close(now), close(files), close(info), close(root), close(item), close(parent);
    return failed;
}

int trashFloor(const char* folder, const char* trash, int count) {
    int failed = 0;
    for (int number = 0; number < count; ++number)
        failed |= moveOne(folder, trash, number);
    return failed;
}
