// The text is read as a stream of events, without a tree in between: what is passed over costs nothing, however much
// and however deep it is, and one pass tells both what is whole and whether all of it is.
#include "TavrinCore/Cleaning/HistoryCodec.h"

#include "TavrinCore/Cleaning/HistoryTokens.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

namespace tavrin {
namespace {

// Keeps keys in the order in which they are written.
using Json = nlohmann::ordered_json;

/// A value that holds no others. Its text is the parser's, which goes on using the room it takes.
using Scalar = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string_view>;

std::optional<std::string> text(const Scalar& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    return text != nullptr ? std::optional<std::string>(*text) : std::nullopt;
}

std::optional<UUID> uuid(const Scalar& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    return text != nullptr ? UUID::fromString(*text) : std::nullopt;
}

std::optional<URL> url(const Scalar& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    return text != nullptr ? URL::fromAbsoluteString(*text) : std::nullopt;
}

std::optional<Date> date(const Scalar& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return Date::fromReference(static_cast<double>(*integer));
    const auto* real = std::get_if<double>(&value);
    return real != nullptr ? std::optional(Date::fromReference(*real)) : std::nullopt;
}

/// A number may be written as 3 or as 3.0; 3.5 is no integer. What is too big for one comes as a double too, and from
/// the bounds on nobody can tell by how much; within them every integer comes exactly.
std::optional<std::int64_t> integer(const Scalar& value) {
    if (const auto* exact = std::get_if<std::int64_t>(&value)) return *exact;
    const auto* real = std::get_if<double>(&value);
    constexpr double limit = 9'223'372'036'854'775'808.0;  // 2 to the power of 63
    if (real == nullptr || *real <= -limit || *real >= limit || std::trunc(*real) != *real) return std::nullopt;
    return static_cast<std::int64_t>(*real);
}

/// False when there was nothing to take.
template <class T>
bool take(std::optional<T>& field, std::optional<T> value) {
    field = std::move(value);
    return field.has_value();
}

struct EntryDraft {
    std::optional<URL> original;
    std::optional<URL> trashed;

    /// False when a key that counts has a value of the wrong kind; so in the next one.
    bool set(std::string_view key, const Scalar& value) {
        if (key == "original") return take(original, url(value));
        if (key == "trashed") return take(trashed, url(value));
        return true;
    }
};

struct RecordDraft {
    std::optional<UUID> id;
    std::optional<Date> date;
    std::optional<std::string> module;
    std::optional<std::string> moduleKey;
    std::optional<std::int64_t> itemCount;
    std::optional<std::int64_t> reclaimedBytes;
    std::optional<std::vector<TrashedEntry>> entries;
    bool isDefective = false;

    bool set(std::string_view key, const Scalar& value) {
        if (key == "id") return take(id, uuid(value));
        if (key == "date") return take(date, tavrin::date(value));
        if (key == "module") return take(module, text(value));
        if (key == "moduleKey") return take(moduleKey, text(value)) || std::holds_alternative<std::nullptr_t>(value);
        if (key == "itemCount") return take(itemCount, integer(value));
        if (key == "reclaimedBytes") return take(reclaimedBytes, integer(value));
        return key != "entries";
    }

    std::optional<CleanupRecord> finish() && {
        if (isDefective || !id || !date || !module || !itemCount || !reclaimedBytes || !entries) return std::nullopt;
        return CleanupRecord{*id,        *date,           std::move(*module), std::move(moduleKey),
                             *itemCount, *reclaimedBytes, std::move(*entries)};
    }
};

/// Follows the parser through the text. `place_` is what the next value would be part of; a container that has no
/// business there is passed over with all that it holds.
class HistoryReader final : public nlohmann::json_sax<Json> {
  public:
    /// Only once the parser has come to the end.
    DecodedHistory result() && { return {std::move(records_), isArray_ && !dropped_}; }

    bool null() override { return scalar(nullptr); }
    bool boolean(bool value) override { return scalar(value); }
    bool number_integer(std::int64_t value) override { return scalar(value); }
    bool number_unsigned(std::uint64_t value) override {
        if (std::in_range<std::int64_t>(value)) return scalar(static_cast<std::int64_t>(value));
        return scalar(static_cast<double>(value));
    }
    bool number_float(double value, const std::string& /*text*/) override { return scalar(value); }
    bool string(std::string& value) override { return scalar(std::string_view(value)); }
    bool binary(Json::binary_t& /*value*/) override { return false; }  // not in a text

    bool key(std::string& name) override {
        if (passedOver_ == 0) key_ = name;
        return true;
    }

    bool start_object(std::size_t /*count*/) override {
        if (passedOver_ == 0 && place_ == Place::history) {
            draft_ = {};
            place_ = Place::record;
        } else if (passedOver_ == 0 && place_ == Place::entries) {
            entry_ = {};
            place_ = Place::entry;
        } else {
            passOver();
        }
        return true;
    }

    bool start_array(std::size_t /*count*/) override {
        if (passedOver_ == 0 && place_ == Place::file) {
            isArray_ = true;
            place_ = Place::history;
        } else if (passedOver_ == 0 && place_ == Place::record && key_ == "entries") {
            draft_.entries.emplace();
            place_ = Place::entries;
        } else {
            passOver();
        }
        return true;
    }

    bool end_object() override {
        if (leftPassedOver()) return true;
        if (place_ == Place::record) {
            finishRecord();
            place_ = Place::history;
        } else {
            finishEntry();
            place_ = Place::entries;
        }
        return true;
    }

    bool end_array() override {
        if (leftPassedOver()) return true;
        place_ = place_ == Place::entries ? Place::record : Place::file;
        return true;
    }

    bool parse_error(std::size_t /*at*/, const std::string& /*token*/, const Json::exception& /*error*/) override {
        return false;
    }

  private:
    enum class Place : std::uint8_t {
        file,
        history,
        record,
        entries,
        entry,
    };

    bool scalar(const Scalar& value) {
        if (passedOver_ == 0) put(value);
        return true;
    }

    void put(const Scalar& value) {
        switch (place_) {
            case Place::file:
                break;
            case Place::history:
                dropped_ = true;
                break;
            case Place::record:
                if (!draft_.set(key_, value)) draft_.isDefective = true;
                break;
            case Place::entries:
                draft_.isDefective = true;
                break;
            case Place::entry:
                if (!entry_.set(key_, value)) draft_.isDefective = true;
                break;
        }
    }

    void passOver() {
        // Whatever fits nowhere serves: here a container is as wrong as this.
        if (passedOver_++ == 0) put(false);
    }
    bool leftPassedOver() {
        if (passedOver_ == 0) return false;
        --passedOver_;
        return true;
    }

    void finishRecord() {
        if (std::optional<CleanupRecord> record = std::move(draft_).finish()) {
            records_.push_back(std::move(*record));
        } else {
            dropped_ = true;
        }
    }

    void finishEntry() {
        if (entry_.original && entry_.trashed) {
            draft_.entries->push_back({std::move(*entry_.original), std::move(*entry_.trashed)});
        } else {
            draft_.isDefective = true;
        }
    }

    Place place_ = Place::file;
    /// Levels of nesting within a container that is passed over.
    std::size_t passedOver_ = 0;
    std::string key_;
    RecordDraft draft_;
    EntryDraft entry_;
    std::vector<CleanupRecord> records_;
    bool isArray_ = false;
    bool dropped_ = false;
};

/// Nil when the text is no JSON.
std::optional<DecodedHistory> read(std::string_view text) {
    HistoryReader reader;
    if (!Json::sax_parse(text, &reader)) return std::nullopt;
    return std::move(reader).result();
}

bool isReadable(std::string_view token) {
    return Json::accept(token);
}

Json jsonEntry(const TrashedEntry& entry) {
    Json::object_t object;
    object.reserve(2);
    object.emplace("original", entry.original.absoluteString());
    object.emplace("trashed", entry.trashed.absoluteString());
    return object;
}

Json jsonRecord(const CleanupRecord& record) {
    Json::object_t object;
    object.emplace("id", record.id.uuidString());
    object.emplace("date", record.date.secondsSinceReference());
    object.emplace("module", record.module);
    if (record.moduleKey) object.emplace("moduleKey", *record.moduleKey);
    object.emplace("itemCount", record.itemCount);
    object.emplace("reclaimedBytes", record.reclaimedBytes);
    Json::array_t entries;
    entries.reserve(record.entries.size());
    std::ranges::transform(record.entries, std::back_inserter(entries), jsonEntry);
    object.emplace("entries", std::move(entries));
    return object;
}

/// Indented as an element of the array, with slashes escaped. Both can be done on the finished text: inside a JSON
/// string no line ends, and outside one no slash stands.
void appendElement(std::string& text, const Json& element) {
    const std::string plain = element.dump(2, ' ', false, Json::error_handler_t::replace);
    text.append("\n  ");
    std::size_t taken = 0;
    for (std::size_t at = 0; at < plain.size(); ++at) {
        if (plain[at] != '/' && plain[at] != '\n') continue;
        text.append(plain, taken, at - taken).append(plain[at] == '/' ? "\\/" : "\n  ");
        taken = at + 1;
    }
    text.append(plain, taken);
}

}  // namespace

DecodedHistory decodeHistory(std::string_view text) {
    std::optional<DecodedHistory> decoded = read(text);
    if (!decoded) {
        // The parser gives up the whole text for one such token; none of them costs more than its record.
        if (const auto mended = withoutUnreadableTokens(text, isReadable)) decoded = read(*mended);
    }
    if (!decoded) return {};
    // To the parser a zero byte is the end, whatever comes after it: blocks that were never written, or worse.
    if (text.find('\0') != std::string_view::npos) decoded->isIntact = false;
    return std::move(*decoded);
}

std::optional<std::string> encodeHistory(const std::vector<CleanupRecord>& records) {
    std::string text = "[";
    // Record by record, so that no tree of the whole history stands beside its text.
    for (const CleanupRecord& record : records) {
        if (!std::isfinite(record.date.secondsSinceReference())) return std::nullopt;
        if (text.size() > 1) text.push_back(',');
        appendElement(text, jsonRecord(record));
    }
    text.append(records.empty() ? "]" : "\n]");
    return text;
}

}  // namespace tavrin
