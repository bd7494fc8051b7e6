#include "TavrinClean/Kit/AppModel.h"

#include <utility>

namespace tavrin {

AppModel::AppModel(QObject* parent) : AppModel(ModuleServices::real(), parent) {}

AppModel::AppModel(ModuleServices services, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      history_(*services_.background, services_.restore),
      store_(services_, &history_),
      cleanupModules_(ModuleSection::cleanup, store_),
      spaceModules_(ModuleSection::space, store_) {}

AppModel::~AppModel() {
    store_.cancelAll();
    services_.background->drain();
}

bool AppModel::stopWork(std::chrono::milliseconds patience) {
    store_.cancelAll();
    bool ended = services_.background->drain(patience);
    while (!ended && (store_.isCleaning() || !history_.restoring().empty()))
        ended = services_.background->drain(patience);
    return ended;
}

void AppModel::mainInterfaceAppeared() {
    if (std::exchange(appeared_, true)) return;
    services_.requestNotifications();
}

}  // namespace tavrin
