// The floor that cleaning is measured against: the system calls of a safe move to the Trash, and nothing else.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Moves `folder`/0 to `folder`/count-1 into the Trash at `trash`, whose two folders must be there. 0 for success.
int trashFloor(const char* folder, const char* trash, int count);

#ifdef __cplusplus
}
#endif
