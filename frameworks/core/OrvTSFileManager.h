#pragma once
// File services of the library: existence, deletion, atomic writes, folders, and the library's
// own temporary folder. Paths are plain strings; a null path is harmless everywhere.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class OrvTSFileManager {
  public:
    OrvTSFileManager() = delete;

    static bool isExistFileAtPath(const std::optional<std::string>& path);
    // Deletes a file or a whole folder; null or missing paths do nothing. False only when
    // something that exists could not be removed.
    static bool deletePath(const std::optional<std::string>& path);
    static void deletePaths(const std::vector<std::string>& paths);

    // Creates the folder and its parents; true when it exists afterwards.
    static bool createDirectoryAtPath(const std::string& path);
    // Writes to a hidden file beside `path`, flushes it and renames it into place, so readers
    // see the old file or the whole new one. On failure nothing is left behind.
    static bool writeDataAtomically(const std::vector<uint8_t>& data, const std::string& path);
    static std::optional<std::vector<uint8_t>> readDataAtPath(const std::string& path);

    // The library's temporary folder ($ORV_TEMP_DIR, else "orvviews" in the system's temporary
    // folder), created on first use.
    static std::string temporaryDirectory();
    // A new path in that folder with the extension (".jpg"), never handed out before in this
    // process and naming no existing file.
    static std::string newTemporaryPath(const std::string& extension);
};
