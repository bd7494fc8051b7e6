// A second file system for a test: what runs here has mounts of its own, which nobody else sees and which end with it.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <functional>

namespace tavrin::test {

/// Runs `body` in a child process with a mount namespace of its own (as an ordinary user: with a user namespace too).
/// What it expects and doesn't get fails the calling test; so does a system that grants no namespace.
void withOwnMounts(const std::function<void()>& body);

/// Inside withOwnMounts: an empty tmpfs of at most `megabytes` over an existing folder.
void mountTmpfs(const URL& folder, unsigned megabytes = 16);
/// Inside withOwnMounts: reading is no longer written down below this mount point.
void makeNoatime(const URL& mountPoint);
/// Inside withOwnMounts: a file system over an existing folder that nobody answers for, as of a server that is down:
/// who asks it anything waits, and ends the test when that takes a minute.
void mountStalled(const URL& folder);
/// Inside withOwnMounts: `source` seen at `target` too.
void mountBind(const URL& source, const URL& target);
/// Inside withOwnMounts: no more writing below this mount point.
void makeReadOnly(const URL& mountPoint);

}  // namespace tavrin::test
