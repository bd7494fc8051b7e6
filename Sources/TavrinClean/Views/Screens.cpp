#include "Screens.h"

#include "Screen.h"
#include "TavrinClean/Kit/Text.h"

namespace tavrin {
namespace {

std::optional<Screen> screenOf(const QString& key) {
    return Screen::fromKey(key.toStdString());
}

QString keyOf(Screen::Case which) {
    return qtText(Screen(which).key());
}

}  // namespace

QStringList Screens::leading() {
    return {first(), keyOf(Screen::Case::dashboard), keyOf(Screen::Case::performance), keyOf(Screen::Case::history)};
}

QString Screens::belowCleanup() {
    return keyOf(Screen::Case::trash);
}

QString Screens::belowSpace() {
    return keyOf(Screen::Case::diskMap);
}

QString Screens::first() {
    return keyOf(Screen::Case::smartScan);
}

QString Screens::titleOf(const QString& key) {
    const auto screen = screenOf(key);
    return screen ? qtText(screen->title()) : QString();
}

QString Screens::subtitleOf(const QString& key) {
    const auto screen = screenOf(key);
    return screen ? qtText(screen->subtitle()) : QString();
}

QString Screens::symbolOf(const QString& key) {
    const auto screen = screenOf(key);
    return screen ? qtText(screen->symbol()) : QString();
}

bool Screens::isModule(const QString& key) {
    const auto screen = screenOf(key);
    return screen && screen->which() == Screen::Case::module;
}

}  // namespace tavrin
