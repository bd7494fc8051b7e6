#include "Files.h"

#include "TavrinClean/Kit/Text.h"

namespace tavrin {

QString Files::placeOf(const QString& url) {
    const auto parsed = URL::fromAbsoluteString(url.toStdString());
    return parsed ? qtLine(parsed->path()) : QString();
}

}  // namespace tavrin
