// Tests of refusal have to be refused, and root never is. For as long as an OrdinaryUser lives, this thread is held to
// the permission bits like anybody else, and no owner of others' files: the capabilities that pass over that are
// dropped. Where the tests run as a user without them, it does nothing.
#pragma once

#include <cstdint>

namespace tavrin::test {

class OrdinaryUser {
  public:
    /// Throws std::runtime_error when the rights can't be dropped: a test of refusal fails then, it is never passed
    /// over.
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    std::uint32_t before_;
};

}  // namespace tavrin::test
