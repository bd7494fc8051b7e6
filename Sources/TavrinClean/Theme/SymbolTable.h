// Which drawing stands for a symbol. The keys are the names that the modules, tasks and screens call their symbols by.
#pragma once

#include <span>
#include <string_view>

namespace tavrin {

struct SymbolFile {
    std::string_view key;
    /// The name of a file in Resources/icons, without ".svg".
    std::string_view file;
};

/// Every symbol there is, sorted by key.
[[nodiscard]] std::span<const SymbolFile> symbolFiles();

/// The drawing of that symbol; empty when there is none.
[[nodiscard]] std::string_view symbolFile(std::string_view key);

}  // namespace tavrin
