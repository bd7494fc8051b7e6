#include "TavrinClean/Platform/Linux/ActivationToken.h"

#include <QString>
#include <QtGlobal>
#include <array>

namespace tavrin {
namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";

struct Right {
    const char* variable;
    const char* key;
};

// The second is what desktops gave before there was the first; some give nothing else.
constexpr std::array rights{Right{tokenVariable, "activation-token"},
                            Right{"DESKTOP_STARTUP_ID", "desktop-startup-id"}};

}  // namespace

QVariantMap activationOfThisStart() {
    QVariantMap data;
    for (const Right& right : rights) {
        const QString value = qEnvironmentVariable(right.variable);
        if (!value.isEmpty()) data.insert(QString::fromLatin1(right.key), value);
    }
    return data;
}

void takeActivation(const QVariantMap& platformData) {
    for (const Right& right : rights) {
        const QString value = platformData.value(QString::fromLatin1(right.key)).toString();
        if (value.isEmpty()) continue;
        // The toolkit has no other door: it looks there when it activates a window, and clears it.
        qputenv(tokenVariable, value.toUtf8());
        return;
    }
}

}  // namespace tavrin
