// The sample home and its manifest, made by the scripts that people use.
#pragma once

#include "Support/Command.h"
#include "TavrinCore/Models/URL.h"

#include <string>
#include <vector>

namespace tavrin::test {

/// As run() does, with the complaints in the output: what a person would see.
[[nodiscard]] CommandResult runAsSeen(const std::vector<std::string>& command);

/// scripts/make-sample-home; fails the test when it can't be made.
void makeSampleHome(const URL& folder, const std::vector<std::string>& options = {});
/// scripts/home-manifest of all but the history that the program keeps there; fails the test when it can't be read.
[[nodiscard]] std::string homeManifest(const URL& folder, const std::vector<std::string>& options = {});

}  // namespace tavrin::test
