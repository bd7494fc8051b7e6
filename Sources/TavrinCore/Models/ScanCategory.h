// What a finding is. A category decides nothing: whether a finding starts selected is its scanner's word, per finding.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

enum class ScanCategory : std::uint8_t {
    systemCache,
    userCache,
    logs,
    tempFiles,
    appLeftovers,
    derivedData,
    duplicate,
    largeFile,
    oldFile,
    downloads,
    trash,
    application,
    similarImage,
    appLanguage,
    startupItem,
    developerCache,
    buildArtifacts,
    mailAttachment,
    screenshot,
    browserCache,
    deviceBackup,
    messagesAttachment,
};

inline constexpr std::array allScanCategories{
    ScanCategory::systemCache,        ScanCategory::userCache,      ScanCategory::logs,
    ScanCategory::tempFiles,          ScanCategory::appLeftovers,   ScanCategory::derivedData,
    ScanCategory::duplicate,          ScanCategory::largeFile,      ScanCategory::oldFile,
    ScanCategory::downloads,          ScanCategory::trash,          ScanCategory::application,
    ScanCategory::similarImage,       ScanCategory::appLanguage,    ScanCategory::startupItem,
    ScanCategory::developerCache,     ScanCategory::buildArtifacts, ScanCategory::mailAttachment,
    ScanCategory::screenshot,         ScanCategory::browserCache,   ScanCategory::deviceBackup,
    ScanCategory::messagesAttachment,
};

/// The case's own name.
[[nodiscard]] std::string_view rawValue(ScanCategory category);
[[nodiscard]] std::optional<ScanCategory> scanCategoryFromRawValue(std::string_view rawValue);
/// A text of the running language.
[[nodiscard]] const std::string& displayName(ScanCategory category);

}  // namespace tavrin
