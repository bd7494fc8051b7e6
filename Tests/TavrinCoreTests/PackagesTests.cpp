#include "TavrinCore/Platform/Packages.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

TEST(Packages, anExtensionMakesAPackageWhateverItsCase) {
    for (const char* name :
         {"Mail.app", "Mail.APP", "Photos Library.photoslibrary", "x.tar.pkg", "Old mail.mbox", "a.prefPane"})
        EXPECT_TRUE(isPackageName(name)) << name;
}

TEST(Packages, whatHasNoSuchExtensionIsAFolder) {
    for (const char* name : {"app", ".app", "Mail.app.", "Mail.apps", "Mail.ap", "Applications", "", "a.b/"})
        EXPECT_FALSE(isPackageName(name)) << name;
}

}  // namespace
}  // namespace tavrin
