// Property lists that other programs wrote, XML or binary: what bundles, launch agents and device backups tell.
//
// They are hostile until shown otherwise. A binary list of a hundred bytes may stand for gigabytes, since its
// containers may hold one another many times over, and a deep one may overflow a stack; so each list is measured before
// it is expanded, and one beyond the limits is no property list. Neither is anything else: JSON, the older text form, a
// list that is cut short, and an XML list with a document type of its own all give nil.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tavrin {

/// What a list may cost. Within the default, reading takes well under a second and 128 MiB.
struct PropertyListLimits {
    /// Of the file.
    std::size_t maxBytes = std::size_t{1} << 20U;
    /// Containers inside containers.
    std::size_t maxDepth = 128;
    /// Values and keys, each as often as it is referred to.
    std::size_t maxNodes = 100'000;
    /// Of all strings and data together, each as often as it is referred to.
    std::size_t maxContentBytes = std::size_t{16} << 20U;
};

/// One value, with all that lies in it. Strings are bytes, UTF-8 wherever the writer kept to the rules.
class PropertyList {
  public:
    struct Data {
        std::string bytes;
        friend bool operator==(const Data&, const Data&) = default;
    };
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList, std::less<>>;

    /// Nil for what is no property list within the limits.
    [[nodiscard]] static std::optional<PropertyList> fromBytes(std::string_view bytes,
                                                               const PropertyListLimits& limits = {});
    /// The same for a file; nil for one that can't be read and for whatever is no regular file. Links are followed.
    [[nodiscard]] static std::optional<PropertyList> fromFile(const URL& url, const PropertyListLimits& limits = {});

    /// Null: no type of a list, but what stands for a date that is out of reach (see date()).
    PropertyList() = default;
    explicit PropertyList(bool value) : value_(value) {}
    explicit PropertyList(std::int64_t value) : value_(value) {}
    explicit PropertyList(double value) : value_(value) {}
    explicit PropertyList(std::string value) : value_(std::move(value)) {}
    explicit PropertyList(Data value) : value_(std::move(value)) {}
    explicit PropertyList(Date value) : value_(value) {}
    explicit PropertyList(Array value) : value_(std::move(value)) {}
    explicit PropertyList(Dictionary value) : value_(std::move(value)) {}

    // The value, if it is of that type; nil otherwise. Pointers live as long as this value.

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    [[nodiscard]] std::optional<bool> boolean() const { return copied<bool>(); }
    /// One above the largest of 64 bits with a sign comes out negative: the reader doesn't tell the two apart. The
    /// object numbers of a keyed archive are integers too.
    [[nodiscard]] std::optional<std::int64_t> integer() const { return copied<std::int64_t>(); }
    [[nodiscard]] std::optional<double> real() const { return copied<double>(); }
    /// From 1933 to 2068; the reader counts seconds in 32 bits, and other dates are null.
    [[nodiscard]] std::optional<Date> date() const { return copied<Date>(); }
    [[nodiscard]] const std::string* string() const { return std::get_if<std::string>(&value_); }
    [[nodiscard]] const Data* data() const { return std::get_if<Data>(&value_); }
    [[nodiscard]] const Array* array() const { return std::get_if<Array>(&value_); }
    [[nodiscard]] const Dictionary* dictionary() const { return std::get_if<Dictionary>(&value_); }

    // The value of one key, if this is a dictionary that has it and it is of that type; nil otherwise.

    [[nodiscard]] const PropertyList* value(std::string_view key) const;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;
    [[nodiscard]] std::optional<double> real(std::string_view key) const;
    [[nodiscard]] std::optional<Date> date(std::string_view key) const;
    [[nodiscard]] const std::string* string(std::string_view key) const;
    [[nodiscard]] const Data* data(std::string_view key) const;
    [[nodiscard]] const Array* array(std::string_view key) const;
    [[nodiscard]] const Dictionary* dictionary(std::string_view key) const;

    friend bool operator==(const PropertyList& a, const PropertyList& b) { return a.value_ == b.value_; }

  private:
    template <class T>
    [[nodiscard]] std::optional<T> copied() const {
        const T* found = std::get_if<T>(&value_);
        return found != nullptr ? std::optional<T>(*found) : std::nullopt;
    }

    std::variant<std::monostate, bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary> value_;
};

}  // namespace tavrin
