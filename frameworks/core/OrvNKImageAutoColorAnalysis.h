#pragma once
// The editor's automatic colour correction. The levels are read from a small copy of the photo
// (quick enough to preview at once), then the same levels are applied to the photo at full size
// and saved as a new JPEG that keeps the photo's EXIF. The work runs off the main thread; every
// block is called on the main thread, always after the call that started it has returned.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvNKImageColorArgument.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvNKImageAutoColorAnalysis : public rt::Object {
    ORV_DECLARE_CLASS(OrvNKImageAutoColorAnalysis)
  public:
    using Arguments = std::shared_ptr<OrvNKImageColorArgument>;
    using ThumbBlock = std::function<void(Arguments, long status)>;
    using CopyBlock = std::function<void(std::optional<std::string> path)>;

    // The statuses of analysisWithThumb; the arguments are null unless it succeeded.
    static constexpr long kStatusSuccess = 1;
    // No thumbnail, or one without a visible pixel: nothing to analyse.
    static constexpr long kStatusNoPicture = 0;
    // A reset() or a newer analysis came before this one finished; its levels were dropped.
    static constexpr long kStatusCancelled = -1;

    // Remembers the paths and analyses the thumbnail; on success its levels are the ones the
    // next copies apply.
    void analysisWithThumb(const gfx::ImagePtr& thumb, const std::string& input,
                           const std::string& output, ThumbBlock thumbBlock);
    // Applies the levels of the last successful analysis to the JPEG at `input`, at full size
    // and upright, and writes the result to `output` (JPEG quality 0.95, the input's EXIF made
    // to match the new pixels). The block gets `output`, or nullopt when there are no levels,
    // the input cannot be read, the write fails, or a reset() came first; then nothing new is
    // left at `output`.
    void copyAnalysisWithInput(const std::string& input, const std::string& output,
                               CopyBlock block);
    // Forgets the paths and the levels; runs still going report as cancelled.
    void reset();

    const Arguments& arguments() const { return arguments_; }
    const std::string& input() const { return input_; }
    const std::string& output() const { return output_; }

  private:
    void finishAnalysis(const Arguments& args, uint64_t run, const ThumbBlock& block);
    void finishCopy(bool written, uint64_t resets, const std::string& output,
                    const CopyBlock& block);
    // The copy itself, off the main thread.
    static bool writeCorrectedCopy(const std::string& input, const std::string& output,
                                   const Arguments& args);

    // Main thread only.
    Arguments arguments_;
    std::string input_;
    std::string output_;
    uint64_t analyses_ = 0;  // analyses started plus resets: only the latest may store levels
    uint64_t resets_ = 0;
};
