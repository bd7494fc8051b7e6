// All that this program does to people's files, behind one interface with few verbs.
//
// The cleaner is its only caller. Tests put a twin here that records what was asked, refuses, or fails midway; the real
// one is systemFileEffects().
//
// Between the check of a path and the act on it, anybody may swap a folder for a link. So an act is done on a HeldItem:
// the folder that held the item when it was checked, kept by descriptor, and the identity of the item in it. What is no
// longer the same item is refused, never moved.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <memory>
#include <optional>

namespace tavrin {

/// One item, held still from check to act. Not shared between threads.
class HeldItem {
  public:
    virtual ~HeldItem() = default;

    /// The path that was asked for.
    [[nodiscard]] const URL& url() const { return url_; }
    /// Where the item really lies once links among its folders are resolved; a link that is the item itself stays.
    [[nodiscard]] const URL& realURL() const { return realURL_; }

  protected:
    HeldItem(URL url, URL realURL) : url_(std::move(url)), realURL_(std::move(realURL)) {}
    HeldItem(const HeldItem&) = default;
    HeldItem& operator=(const HeldItem&) = default;

  private:
    URL url_;
    URL realURL_;
};

class FileEffects {
  public:
    virtual ~FileEffects() = default;

    /// Whether the path leads to something; links are followed, so a dangling one leads to nothing.
    [[nodiscard]] virtual bool exists(const URL& url) = 0;
    /// Whether something bears that name; a dangling link does.
    [[nodiscard]] virtual bool itemExists(const URL& url) = 0;

    /// Takes hold of what stands at `url` now.
    [[nodiscard]] virtual Result<std::unique_ptr<HeldItem>> hold(const URL& url) = 0;

    /// Moves the item to the Trash of its file system, whole or not at all, and tells where it went. A success may come
    /// without a location; then it can't be put back.
    [[nodiscard]] virtual Result<std::optional<URL>> trashItem(HeldItem& item) = 0;
    /// Deletes for good, a folder with all that lies in it. A failure may leave part of a folder.
    [[nodiscard]] virtual Outcome removeItem(HeldItem& item) = 0;

    /// Makes the folder and those above it that are missing, each readable by the user alone (0700).
    [[nodiscard]] virtual Outcome createDirectory(const URL& url) = 0;
    /// Takes an item out of the Trash, back to `original`, and its note there with it. Fails when `original` is taken.
    [[nodiscard]] virtual Outcome putBack(const URL& trashed, const URL& original) = 0;

  protected:
    FileEffects() = default;
    FileEffects(const FileEffects&) = default;
    FileEffects& operator=(const FileEffects&) = default;
};

/// The real ones. Stateless, safe from any thread.
[[nodiscard]] FileEffects& systemFileEffects();

}  // namespace tavrin
