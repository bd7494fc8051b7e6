// FileEffects on Linux. The system calls can be exchanged, for tests that let them fail.
#pragma once

#include "TavrinCore/Platform/FileEffects.h"
#include "TavrinCore/Platform/Linux/SystemCalls.h"

namespace tavrin {

/// Works on items that it held itself. Safe from any thread when the calls are.
class SystemFileEffects final : public FileEffects {
  public:
    explicit SystemFileEffects(SystemCalls& calls) : calls_(calls) {}

    [[nodiscard]] bool exists(const URL& url) override;
    [[nodiscard]] bool itemExists(const URL& url) override;
    [[nodiscard]] Result<std::unique_ptr<HeldItem>> hold(const URL& url) override;
    [[nodiscard]] Result<std::optional<URL>> trashItem(HeldItem& item) override;
    [[nodiscard]] Outcome removeItem(HeldItem& item) override;
    [[nodiscard]] Outcome createDirectory(const URL& url) override;
    [[nodiscard]] Outcome putBack(const URL& trashed, const URL& original) override;

  private:
    SystemCalls& calls_;
};

}  // namespace tavrin
