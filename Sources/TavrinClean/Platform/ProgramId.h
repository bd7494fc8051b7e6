// The one name by which a desktop knows the program.
#pragma once

#include <QStringView>

namespace tavrin {

/// In the reversed order of a domain: that of the file which describes the program to a desktop, without its ending,
/// and of the service that a second start looks for.
inline constexpr QStringView programId = u"org.tavrin.Clean";

}  // namespace tavrin
