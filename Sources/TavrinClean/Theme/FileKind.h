// What kind of file stands behind a name, as far as icons and the preview want to know.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <QString>

namespace tavrin {

struct FileKind {
    /// The key of our own symbol for it.
    QString symbol;
    /// The name of the desktop's icon; empty when its theme has none for this kind.
    QString iconName;
    bool isImage = false;
    bool isText = false;
};

/// By the name and the directory mark alone: nothing is read, so a list can ask for every row that comes into view.
[[nodiscard]] FileKind fileKind(const URL& url);

}  // namespace tavrin
