// A folder that nobody may look into, root included, for as long as this lives.
#pragma once

#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"

namespace tavrin::test {

class LockedFolder {
  public:
    explicit LockedFolder(const URL& folder) : folder_(folder) { setMode(folder_, 0000); }
    ~LockedFolder() { setMode(folder_, 0700); }
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

  private:
    URL folder_;
    OrdinaryUser user_;
};

}  // namespace tavrin::test
