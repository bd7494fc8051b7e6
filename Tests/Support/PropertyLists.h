// Property lists for tests: sound ones, and ones that no honest program writes.
#pragma once

#include "Support/TestFolder.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin::test {

/// The XML form with `value` ("<dict>…</dict>") as its one value.
[[nodiscard]] std::string xmlPropertyList(std::string_view value);

/// The binary form, object by object, without any check. Objects are numbered in the order of their adding.
class BinaryPropertyList {
  public:
    /// References to other objects take `referenceSize` bytes.
    explicit BinaryPropertyList(std::size_t referenceSize = 1) : referenceSize_(referenceSize) {}

    /// Each gives the object's number.
    std::size_t raw(std::string object);
    std::size_t string(std::string_view ascii);
    std::size_t utf16(std::u16string_view text);
    std::size_t array(const std::vector<std::size_t>& items);
    std::size_t dictionary(const std::vector<std::size_t>& keys, const std::vector<std::size_t>& values);

    [[nodiscard]] std::string bytes(std::size_t root) const;

  private:
    std::string withReferences(unsigned char type, std::size_t size, const std::vector<std::size_t>& references) const;

    std::size_t referenceSize_;
    std::vector<std::string> objects_;
};

/// `levels` arrays, each of ten references to the next: ten to the power of `levels` values in a few bytes.
[[nodiscard]] std::string propertyListBomb(std::size_t levels);

/// A bundle at `relative` whose Contents/Info.plist holds `info`. Gives the bundle's location.
URL makeBundle(const TestFolder& world, std::string_view relative, std::string_view info);
/// The same with an identifier and nothing else, in the XML form.
URL makeBundleWithIdentifier(const TestFolder& world, std::string_view relative, std::string_view identifier);

}  // namespace tavrin::test
