#include "TavrinCore/Platform/DockStore.h"

#include "TavrinCore/Platform/Linux/GnomeFavourites.h"

namespace tavrin {

std::unique_ptr<DockStore> systemDockStore() {
    return gnomeFavourites();
}

}  // namespace tavrin
