#pragma once
// One entry of a brush canvas's history: the canvas after a stroke. It starts in memory and moves
// to a PNG file in the library's temporary folder as soon as a background pass reaches it, so a
// long history holds in memory only the strokes not yet written. Reading it back decodes the file
// each time without keeping the picture.
//
// Each log is its own monitor: the background write and a read on the main thread never
// interleave, and a log is written at most once however many passes reach it.

#include <mutex>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvSmudgeLog : public rt::Object {
    ORV_DECLARE_CLASS(OrvSmudgeLog)
  public:
    static std::shared_ptr<OrvSmudgeLog> initWithImage(gfx::ImagePtr image);

    // The picture: the one in memory, else the file's (null when the file has vanished).
    gfx::ImagePtr image();
    bool cached();
    const std::optional<std::string>& cacheTempFilePath() const { return cacheTempFilePath_; }

    // Writes the picture to the file when it is still only in memory, then lets it go. A failed
    // write keeps it in memory for the next pass.
    void runCacheJob();
    // Deletes the file and forgets the picture.
    void destroy();

    // "<temporary folder>/smudgeCache_<seconds since 1970>.tmp". Two logs made within the same
    // microsecond get consecutive microseconds, so no two logs of a process share a file.
    static std::string buildTempFile();

  private:
    std::mutex mutex_;
    std::optional<std::string> cacheTempFilePath_;
    bool cached_ = false;
    gfx::ImagePtr image_;
};
