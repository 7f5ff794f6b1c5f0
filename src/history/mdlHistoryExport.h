#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarvik {

/// Lets the user choose a file for the records; nothing when none was chosen, or when one that is
/// there shall stay. An error of the dialog is reported.
std::optional<std::string> ChooseExportFile();

/// The name with the ending of such files where the filter for them (1) was chosen and the name
/// does not have it.
std::string WithExportExtension(const std::string& Name, std::uint32_t FilterIndex);

/// Writes all imported records into the file: as a whole, or, where it cannot be written or the
/// user stops it, not at all. True when it was written; raises the error that prevented it.
bool ExportRecords(const std::string& FileName);

} // namespace tarvik
