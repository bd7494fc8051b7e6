// The location of a file, held as the file system's own bytes.
//
// A name that is not valid UTF-8 goes through a URL unharmed: nothing here decodes text. Text for people is made at the
// edge (see displayText); the absolute form percent-encodes the bytes, so it survives JSON and comes back the same.
//
// Paths behave as Foundation's do where that can be seen: a trailing slash says "a directory" and is not part of
// `path`,
// ".hidden" has no extension, "foo.tar.gz" has "gz", "a." has none.
//
// A plain value. Only resolvingSymlinksInPath touches the disk.
#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

class URL {
  public:
    /// The root folder, "/".
    URL();

    /// From a path; a relative one is taken below the current folder. A trailing slash marks a directory.
    /// Throws std::invalid_argument for a path that holds a zero byte: no file system has one.
    static URL fromPath(std::string_view path);
    static URL fromPath(std::string_view path, bool isDirectory);

    /// From the absolute form, "file:///a%20b/". Nil for anything else: another scheme, another host, a relative path,
    /// a broken escape, a zero byte, a query or a fragment. Bytes that could have been escaped and weren't are taken.
    [[nodiscard]] static std::optional<URL> fromAbsoluteString(std::string_view text);

    /// The bytes of the path, always absolute, without a trailing slash (but "/" itself).
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] bool hasDirectoryPath() const { return directory_; }

    /// The last component; "/" for the root.
    [[nodiscard]] std::string_view lastPathComponent() const;
    /// What follows the last dot of the last component; empty where there is none.
    [[nodiscard]] std::string_view pathExtension() const;
    /// "/" first, then each name.
    [[nodiscard]] std::vector<std::string_view> pathComponents() const;

    /// One or more components below this. A trailing slash in `component`, or the flag, marks a directory.
    [[nodiscard]] URL appendingPathComponent(std::string_view component, bool isDirectory = false) const;
    /// The parent folder, as a directory; the root's is the root.
    [[nodiscard]] URL deletingLastPathComponent() const;

    /// Without "." and ".." and doubled slashes. By the text alone: links are not looked at.
    [[nodiscard]] URL standardizedFileURL() const;
    /// Links resolved as far as the path exists, then standardised. Gives the standardised form where the disk can't
    /// tell.
    [[nodiscard]] URL resolvingSymlinksInPath() const;

    /// "file://" and the percent-encoded bytes, with the trailing slash of a directory.
    [[nodiscard]] std::string absoluteString() const;

    /// Same bytes and the same directory mark.
    friend bool operator==(const URL&, const URL&) = default;
    friend auto operator<=>(const URL&, const URL&) = default;

  private:
    URL(std::string path, bool directory) : path_(std::move(path)), directory_(directory) {}

    std::string path_;
    bool directory_;
};

/// The bytes as text for people: valid UTF-8 as it stands, each maximal broken part as U+FFFD.
[[nodiscard]] std::string displayText(std::string_view bytes);

/// The same, safe in one row: what breaks lines, what controls a device and what turns the direction of the text around
/// it each become U+FFFD. A name can't disguise itself, spread over its neighbours or reach another row.
[[nodiscard]] std::string lineText(std::string_view bytes);

/// The same for text of many lines: line feeds and tabs stay, and a carriage return before a line feed goes.
[[nodiscard]] std::string safeText(std::string_view bytes);

}  // namespace tavrin

template <>
struct std::hash<tavrin::URL> {
    std::size_t operator()(const tavrin::URL& url) const noexcept { return std::hash<std::string>{}(url.path()); }
};
