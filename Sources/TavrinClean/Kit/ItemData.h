// What a row tells of a finding.
#pragma once

#include "TavrinClean/Kit/RowRoles.h"

#include <QString>
#include <QVariant>
#include <cstdint>
#include <optional>

namespace tavrin {

struct ArrangedGroup;
struct CleanableItem;
struct ItemFact;
class Findings;

/// The value of any RowRole that follows from the finding itself; those of other rows and those of the list (ticks,
/// what is opened) are empty values of their type. `fact` may be null.
[[nodiscard]] QVariant itemRoleValue(const CleanableItem& item, const ItemFact* fact, int role);

/// The same for a group's header, `selected` of whose findings are ticked.
[[nodiscard]] QVariant groupRoleValue(const Findings& findings, const ArrangedGroup& group, std::uint32_t selected,
                                      int role);

/// How QML names a group. Any bytes may be in its key, so they are escaped, and back.
[[nodiscard]] QString groupHandle(const Findings& findings, std::uint32_t group);
[[nodiscard]] std::optional<std::uint32_t> groupWithHandle(const Findings& findings, const QString& handle);
/// The role `rowId` of a header: no finding's.
[[nodiscard]] QString groupRowId(const Findings& findings, std::uint32_t group);

/// What a role has where it says nothing: false, 0, an empty text.
[[nodiscard]] QVariant emptyRoleValue(int role);

/// Whether a picture of it can be shown.
[[nodiscard]] bool isImage(const CleanableItem& item);

}  // namespace tavrin
