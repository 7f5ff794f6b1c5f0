#pragma once

// The parts of a face that cost time with a long log: its files and the sheet that charts are drawn
// on. One per desktop, chosen when this is built.

#include "controls/Canvas.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include "windows/services/WindowsFiles.h"
#else
#include "linux/services/LinuxFiles.h"
#endif

namespace tarvik {

#ifdef _WIN32
using FaceFiles = WindowsFiles;
inline constexpr const char* endOfLine = "\r\n";
#else
using FaceFiles = LinuxFiles;
inline constexpr const char* endOfLine = "\n";
#endif

inline constexpr int sheetWidth = 1600;
inline constexpr int sheetHeight = 900;

/// Lets the work draw on a sheet of that size in memory, as the face's chart does.
void onSheet(const std::function<void(Canvas&)>& work);

/// Writes a new file of these bytes and waits until the disk has them: what no careful save can do
/// without.
void writeAndFlush(const std::string& path, std::string_view bytes);

/// Writes one key as the system's own functions do; false where the system has none.
bool writeKeyBySystem(const std::string& path, const std::string& section, const std::string& key,
                      const std::string& value);

} // namespace tarvik
