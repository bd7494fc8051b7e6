// Pictures as hard to code as photographs, the same for the same number.
#pragma once

#include <filesystem>

namespace tavrin::benchmarks {

// Neither makes a picture where there is one, and each is there whole or not at all. Every tenth JPEG is progressive.
void writeJPEG(const std::filesystem::path& path, unsigned number, unsigned width, unsigned height);
void writePNG(const std::filesystem::path& path, unsigned number, unsigned width, unsigned height);

}  // namespace tavrin::benchmarks
