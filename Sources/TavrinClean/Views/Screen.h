// The places that the window can show, and how the sidebar names each of them.
#pragma once

#include "TavrinCore/Models/ModuleKind.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// One place: a module's screen, or one of the others. A plain value, and the type of the sidebar's selection.
class Screen {
  public:
    enum class Case : std::uint8_t {
        module,
        smartScan,
        dashboard,
        performance,
        diskMap,
        history,
        trash,
    };

    /// Any case but `module`, which says nothing without its kind.
    constexpr explicit Screen(Case which) : case_(which) {}
    [[nodiscard]] static constexpr Screen module(ModuleKind kind) {
        Screen screen(Case::module);
        screen.kind_ = kind;
        return screen;
    }

    /// The module's raw value or the case's name: one text for each screen, and no two alike.
    [[nodiscard]] std::string_view key() const;
    /// Nil for a text that is no screen's key.
    [[nodiscard]] static std::optional<Screen> fromKey(std::string_view key);

    [[nodiscard]] Case which() const { return case_; }
    /// Of a module's screen.
    [[nodiscard]] ModuleKind kind() const { return kind_; }

    /// Texts of the running language; only a module has a subtitle.
    [[nodiscard]] std::string title() const;
    [[nodiscard]] std::string subtitle() const;
    /// The key of its symbol.
    [[nodiscard]] std::string_view symbol() const;

    friend bool operator==(const Screen&, const Screen&) = default;

  private:
    Case case_;
    ModuleKind kind_ = ModuleKind::systemJunk;
};

}  // namespace tavrin

template <>
struct std::hash<tavrin::Screen> {
    std::size_t operator()(const tavrin::Screen& screen) const noexcept {
        return std::hash<std::string_view>{}(screen.key());
    }
};
