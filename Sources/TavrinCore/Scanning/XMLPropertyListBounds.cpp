// The XML form, as the document type PropertyList-1.0.dtd describes it, scanned once from left to right without
// building anything. It is stricter than the reader behind it, so that both see the same elements in the same places:
// no attribute but on <plist>, no document type of the list's own (and so no entities but XML's five and numbers), keys
// and values by turns.
#include "TavrinCore/Scanning/PropertyListBounds.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace tavrin {
namespace {

/// What the reader's slow paths may cost together: moved bytes of text, and entries passed by for an added key. Real
/// lists need a hundredth; a tenth of a second each at the most.
constexpr std::uint64_t kMaxMovedBytes = 500'000'000;
constexpr std::uint64_t kMaxEntriesPassed = 10'000'000;

constexpr std::string_view kSpace = " \t\r\n";
constexpr std::array<std::string_view, 8> kTextElements{"string", "integer", "real",  "date",
                                                        "data",   "true",    "false", "key"};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int twoDigits(std::string_view text) {
    return (text[0] - '0') * 10 + (text[1] - '0');
}

/// "2024-01-31T23:59:59Z". The reader looks the month up in a table.
bool isDate(std::string_view text) {
    constexpr std::string_view pattern = "0000-00-00T00:00:00Z";
    const auto fits = [](char c, char p) { return p == '0' ? isDigit(c) : c == p; };
    if (text.size() != pattern.size() || !std::ranges::equal(text, pattern, fits)) return false;
    const int month = twoDigits(text.substr(5));
    return month >= 1 && month <= 12;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kSpace);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kSpace) - begin + 1);
}

class XMLScan {
  public:
    XMLScan(std::string_view text, const PropertyListLimits& limits) : rest_(text), limits_(limits) {}

    /// Prolog, one value (perhaps inside <plist>), and nothing behind it.
    [[nodiscard]] bool isWithinLimits() {
        if (!skipProlog()) return false;
        bool isWrapped = false;
        if (take("<plist")) {
            isWrapped = true;
            if (!skipMarkup(">")) return false;
        }
        do {
            if (!skipMiscellaneous() || !scanElement()) return false;
        } while (!open_.empty());
        if (!skipMiscellaneous()) return false;
        if (isWrapped && !takeClosingTag("plist")) return false;
        return skipMiscellaneous() && rest_.empty();
    }

  private:
    struct Container {
        bool isDictionary = false;
        bool expectsKey = false;
        std::uint64_t entries = 0;
    };

    bool take(std::string_view prefix) {
        if (!rest_.starts_with(prefix)) return false;
        rest_.remove_prefix(prefix.size());
        return true;
    }

    void skipSpace() { rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpace), rest_.size())); }

    /// What stands before `end`, and steps over it; false where there is none.
    bool takeUntil(std::string_view end, std::string_view& before) {
        const std::size_t place = rest_.find(end);
        if (place == std::string_view::npos) return false;
        before = rest_.substr(0, place);
        rest_.remove_prefix(place + end.size());
        return true;
    }

    bool skipUntil(std::string_view end) {
        std::string_view skipped;
        return takeUntil(end, skipped);
    }

    /// The rest of a tag or declaration. Refused is what could end elsewhere for the reader, or nest: an end inside
    /// quotes, markup, an internal subset.
    bool skipMarkup(std::string_view end) {
        std::string_view skipped;
        if (!takeUntil(end, skipped)) return false;
        return std::ranges::count(skipped, '"') % 2 == 0 && skipped.find_first_of("<>[") == std::string_view::npos;
    }

    /// Spaces, comments and processing instructions.
    bool skipMiscellaneous() {
        for (;;) {
            skipSpace();
            if (take("<!--")) {
                if (!skipUntil("-->")) return false;
            } else if (take("<?")) {
                if (!skipMarkup("?>")) return false;
            } else {
                return true;
            }
        }
    }

    bool skipProlog() {
        if (!skipMiscellaneous()) return false;
        if (take("<!DOCTYPE") && !skipMarkup(">")) return false;
        return skipMiscellaneous();
    }

    bool takeClosingTag(std::string_view name) {
        if (!take("</") || !take(name)) return false;
        skipSpace();
        return take(">");
    }

    bool scanElement() {
        if (rest_.starts_with("</")) return close();
        if (!take("<")) return false;
        const std::string_view name = rest_.substr(0, rest_.find_first_not_of("abcdefghijklmnopqrstuvwxyz"));
        rest_.remove_prefix(name.size());
        skipSpace();
        const bool isEmpty = take("/");
        if (!take(">")) return false;
        if (++nodes_ > limits_.maxNodes || !takeTurn(name == "key")) return false;
        if (name == "dict" || name == "array") return isEmpty || open(name == "dict");
        if (std::ranges::find(kTextElements, name) == kTextElements.end()) return false;
        if (isEmpty) return name != "key";
        return scanText(name);
    }

    bool open(bool isDictionary) {
        if (open_.size() >= limits_.maxDepth) return false;
        open_.push_back({isDictionary, isDictionary, 0});
        return true;
    }

    bool close() {
        if (open_.empty()) return false;
        const Container& container = open_.back();
        if (container.isDictionary && !container.expectsKey) return false;
        if (!takeClosingTag(container.isDictionary ? "dict" : "array")) return false;
        open_.pop_back();
        return true;
    }

    /// Keys stand in dictionaries alone, and there by turns with values.
    bool takeTurn(bool isKey) {
        if (open_.empty() || !open_.back().isDictionary) return !isKey;
        Container& dictionary = open_.back();
        if (dictionary.expectsKey != isKey) return false;
        dictionary.expectsKey = !isKey;
        if (!isKey) return true;
        entriesPassed_ += dictionary.entries++;
        return entriesPassed_ <= kMaxEntriesPassed;
    }

    /// Text, comments and CDATA sections up to the closing tag.
    bool scanText(std::string_view name) {
        for (bool isFirst = true;; isFirst = false) {
            const std::string_view text = rest_.substr(0, rest_.find('<'));
            rest_.remove_prefix(text.size());
            if (!countMoves(text)) return false;
            if (name == "date" && (!isFirst || !rest_.starts_with("</") || !isDate(trimmed(text)))) return false;
            if (take("<!--")) {
                if (!skipUntil("-->")) return false;
            } else if (take("<![CDATA[")) {
                if (!skipUntil("]]>")) return false;
            } else {
                return takeClosingTag(name);
            }
        }
    }

    /// The reader moves what follows an entity, for each.
    bool countMoves(std::string_view text) {
        movedBytes_ += static_cast<std::uint64_t>(std::ranges::count(text, '&')) * text.size();
        return movedBytes_ <= kMaxMovedBytes;
    }

    std::string_view rest_;
    PropertyListLimits limits_;
    std::vector<Container> open_;
    std::size_t nodes_ = 0;
    std::uint64_t movedBytes_ = 0;
    std::uint64_t entriesPassed_ = 0;
};

}  // namespace

bool isXMLPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits) {
    if (bytes.find('\0') != std::string_view::npos) return false;
    return XMLScan(bytes, limits).isWithinLimits();
}

}  // namespace tavrin
