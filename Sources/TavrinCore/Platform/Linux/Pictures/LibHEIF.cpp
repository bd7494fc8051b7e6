#include "TavrinCore/Platform/Linux/Pictures/LibHEIF.h"

#include <dlfcn.h>

#include <optional>

namespace tavrin {
namespace {

std::optional<LibHEIF> load() {
    void* const library = ::dlopen("libheif.so.1", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return std::nullopt;
    LibHEIF functions;
#define TAVRIN_HEIF_LOAD(name)                                                                    \
    functions.name = reinterpret_cast<decltype(functions.name)>(::dlsym(library, "heif_" #name)); \
    if (functions.name == nullptr) return std::nullopt;
    TAVRIN_HEIF_FUNCTIONS(TAVRIN_HEIF_LOAD)
#undef TAVRIN_HEIF_LOAD
    return functions;
}

}  // namespace

const LibHEIF* LibHEIF::get() {
    static const std::optional<LibHEIF> loaded = load();
    return loaded ? &*loaded : nullptr;
}

}  // namespace tavrin
