#include "TavrinClean/Program/DisplayCheck.h"

#include "TavrinCore/Strings.h"

#include <QString>
#include <QtGlobal>
#include <cstdio>
#include <cstdlib>

namespace tavrin {
namespace {

QtMessageHandler usual = nullptr;

// What the toolkit complained of on the way.
QString& complaints() {
    static QString text;
    return text;
}

// By the toolkit's own words: it has no other way to tell this from a platform that isn't installed.
bool isForLackOfADisplay() {
    return complaints().contains(QStringLiteral("could not connect to display")) ||
           complaints().contains(QStringLiteral("Failed to create wl_display"));
}

void hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    complaints() += qFormatLogMessage(type, context, message) + QChar(u'\n');
    if (type != QtFatalMsg) return;
    if (isForLackOfADisplay())
        std::fprintf(stderr, "%s\n", S::windowNoDisplay().c_str());
    else
        std::fputs(qUtf8Printable(complaints()), stderr);
    // Nothing of ours exists yet that would have to be put in order.
    std::_Exit(EXIT_FAILURE);
}

}  // namespace

DisplayCheck::DisplayCheck() {
    usual = qInstallMessageHandler(hear);
}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(usual);
    std::fputs(qUtf8Printable(complaints()), stderr);
    complaints().clear();
}

}  // namespace tavrin
