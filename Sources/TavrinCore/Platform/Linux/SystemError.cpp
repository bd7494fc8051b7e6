#include "TavrinCore/Platform/SystemError.h"

#include "TavrinCore/Strings.h"

#include <locale.h>

#include <clocale>
#include <cstring>

namespace tavrin {
namespace {

locale_t untranslated() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

/// The user's own locale, for the system's words. Where the system lacks it, its untranslated English.
locale_t userLocale() {
    static const locale_t locale = [] {
        const locale_t own = newlocale(LC_ALL_MASK, "", nullptr);
        return own != nullptr ? own : untranslated();
    }();
    return locale;
}

}  // namespace

SystemError SystemError::posix(int errorNumber) {
    SystemError error;
    error.domain = posixDomain;
    error.code = errorNumber;
    error.localizedDescription = S::systemRefusal(errorNumber);
    if (error.localizedDescription.empty()) error.localizedDescription = strerror_l(errorNumber, userLocale());
    error.systemText = strerror_l(errorNumber, untranslated());
    return error;
}

}  // namespace tavrin
