#include "TavrinCore/Platform/SystemError.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tavrin {
namespace {

TEST(SystemError, saysInTheProgramsWordsWhyTheSystemRefused) {
    const SystemError error = SystemError::posix(ENOSPC);
    EXPECT_TRUE(error.isPosix(ENOSPC));
    EXPECT_EQ(error.localizedDescription, S::systemRefusal(ENOSPC));
    EXPECT_EQ(error.localizedDescription, S::useEnglish() ? "There isn't enough free space on the disk."
                                                          : "No hay espacio libre suficiente en el disco.");
}

TEST(SystemError, keepsTheSystemsOwnWordsUntranslated) {
    EXPECT_EQ(SystemError::posix(EACCES).systemText, "Permission denied");
    EXPECT_EQ(SystemError::posix(ENOENT).systemText, "No such file or directory");
}

TEST(SystemError, anErrorWithoutWordsHereBearsTheSystems) {
    ASSERT_EQ(S::systemRefusal(EBADMSG), "");
    EXPECT_FALSE(SystemError::posix(EBADMSG).localizedDescription.empty());
    EXPECT_EQ(SystemError::posix(EBADMSG).systemText, "Bad message");
}

TEST(SystemError, whatAMoveOrAReadCanMeetHasASentence) {
    for (int number :
         {EACCES,  EPERM,  ENOENT, EEXIST,  ENOTEMPTY, ENOSPC, EDQUOT,   EROFS,  EXDEV,   EBUSY,   ENAMETOOLONG,
          ELOOP,   EIO,    EINVAL, ENOTDIR, EISDIR,    EMFILE, ENFILE,   ENOMEM, ESTALE,  ETXTBSY, EFBIG,
          ENOTSUP, EMLINK, EILSEQ, EAGAIN,  EINTR,     ENODEV, ENOTCONN, ENOSYS, EALREADY}) {
        const std::string_view sentence = S::systemRefusal(number);
        EXPECT_TRUE(sentence.ends_with('.')) << number << ": " << sentence;
    }
}

TEST(SystemError, whatChangedUnderTheCheckIsToldAsLeftAlone) {
    EXPECT_EQ(S::systemRefusal(ESTALE), S::useEnglish() ? "It changed while it was being checked, so it was left alone."
                                                        : "Cambió mientras se comprobaba, así que no se ha tocado.");
}

}  // namespace
}  // namespace tavrin
