// An item held still from check to act: its folder and itself kept open, so that neither can be exchanged unnoticed.
#pragma once

#include "TavrinCore/Platform/FileEffects.h"
#include "TavrinCore/Platform/Linux/Descriptor.h"
#include "TavrinCore/Platform/Linux/FileIdentity.h"
#include "TavrinCore/Platform/Linux/SystemCalls.h"

#include <memory>
#include <string>

namespace tavrin {

class HeldFile final : public HeldItem {
  public:
    /// Links among the folders are followed, the item itself is opened for its path alone: a FIFO doesn't wait, a
    /// device doesn't act, a dangling link is what is held.
    [[nodiscard]] static Result<std::unique_ptr<HeldFile>> hold(SystemCalls& calls, const URL& url);

    [[nodiscard]] const Descriptor& folder() const { return folder_; }
    [[nodiscard]] const FileIdentity& folderIdentity() const { return folderIdentity_; }
    [[nodiscard]] const Descriptor& item() const { return item_; }
    [[nodiscard]] const FileIdentity& identity() const { return identity_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    /// The folder's path with all links resolved, in the kernel's own spelling.
    [[nodiscard]] const std::string& realFolderPath() const { return realFolderPath_; }

    /// Whether the path still leads to that folder, and its name there to that item. ESTALE when it doesn't.
    [[nodiscard]] Outcome checkUnchanged(SystemCalls& calls) const;
    /// Whether that name in that folder is the item. False also where the system doesn't say.
    [[nodiscard]] bool isItem(SystemCalls& calls, int folder, const std::string& name) const;

  private:
    struct Parts {
        Descriptor folder;
        Descriptor item;
        FileIdentity folderIdentity;
        FileIdentity identity;
        std::string realFolderPath;
    };
    HeldFile(const URL& url, URL realURL, Parts parts);

    Descriptor folder_;
    Descriptor item_;
    FileIdentity folderIdentity_;
    FileIdentity identity_;
    std::string name_;
    std::string realFolderPath_;
};

/// Of an open descriptor.
[[nodiscard]] Result<FileIdentity> identityOf(SystemCalls& calls, const Descriptor& descriptor);

}  // namespace tavrin
