// The least that measuring a tree can cost: the same system calls as the walker's, and nothing else.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Bytes on disk of the regular files below `path`. Knows no errors, no deep trees, no long names.
long long walkFloor(const char* path);

#ifdef __cplusplus
}
#endif
