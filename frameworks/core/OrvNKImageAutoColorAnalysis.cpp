#include "frameworks/core/OrvNKImageAutoColorAnalysis.h"

#include "platform/rt/Memory.h"

#include "frameworks/core/OrvImageColorCorrection.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvThread.h"

ORV_DEFINE_CLASS(OrvNKImageAutoColorAnalysis, rt::Object)

namespace {

constexpr double kCopyQuality = 0.95;

}  // namespace

void OrvNKImageAutoColorAnalysis::analysisWithThumb(const gfx::ImagePtr& thumb,
                                                    const std::string& input,
                                                    const std::string& output,
                                                    ThumbBlock thumbBlock) {
    input_ = input;
    output_ = output;
    const uint64_t run = ++analyses_;
    auto me = self<OrvNKImageAutoColorAnalysis>();
    OrvThread::initWithStart(
        [thumb]() -> std::shared_ptr<rt::Object> {
            return OrvNKImageColorArgument::analysisWithImage(thumb);
        },
        [me, run, block = std::move(thumbBlock)](std::shared_ptr<rt::Object> result) {
            me->finishAnalysis(std::dynamic_pointer_cast<OrvNKImageColorArgument>(result), run,
                               block);
        });
}

void OrvNKImageAutoColorAnalysis::finishAnalysis(const Arguments& args, uint64_t run,
                                                 const ThumbBlock& block) {
    long status = kStatusCancelled;
    if (run == analyses_) {
        status = args ? kStatusSuccess : kStatusNoPicture;
        // A failed analysis leaves the levels of an earlier one alone.
        if (args) arguments_ = args;
    }
    if (block) block(status == kStatusSuccess ? args : nullptr, status);
}

void OrvNKImageAutoColorAnalysis::copyAnalysisWithInput(const std::string& input,
                                                        const std::string& output,
                                                        CopyBlock block) {
    const uint64_t resets = resets_;
    auto written = std::make_shared<bool>(false);
    auto me = self<OrvNKImageAutoColorAnalysis>();
    OrvThread::initWithStart(
        [input, output, args = arguments_, written]() -> std::shared_ptr<rt::Object> {
            *written = writeCorrectedCopy(input, output, args);
            rt::Memory::releaseFreeMemory();
            return nullptr;
        },
        [me, resets, output, written, block = std::move(block)](std::shared_ptr<rt::Object>) {
            me->finishCopy(*written, resets, output, block);
        });
}

void OrvNKImageAutoColorAnalysis::finishCopy(bool written, uint64_t resets,
                                             const std::string& output, const CopyBlock& block) {
    // A copy made with levels that were reset meanwhile is not wanted any more.
    if (written && resets != resets_) {
        OrvTSFileManager::deletePath(output);
        written = false;
    }
    if (block) block(written ? std::optional<std::string>(output) : std::nullopt);
}

void OrvNKImageAutoColorAnalysis::reset() {
    ++analyses_;
    ++resets_;
    arguments_ = nullptr;
    input_.clear();
    output_.clear();
}

bool OrvNKImageAutoColorAnalysis::writeCorrectedCopy(const std::string& input,
                                                     const std::string& output,
                                                     const Arguments& args) {
    if (!args) return false;
    codec::ImageMetadata metadata;
    // A 12 MP photo is 48 MB a bitmap: each step lets go of its input as soon as its output
    // exists, so no more than two full bitmaps are alive at once.
    gfx::ImagePtr upright =
        orvImageRotatedToUp(orvImageWithContentsOfFileLimit(input, 0, &metadata));
    if (!upright) return false;
    gfx::ImagePtr corrected = orvColorCorrectedImage(upright, args);
    upright = nullptr;
    if (!corrected) return false;
    // The encoder fits the metadata to the upright pixels: orientation 1, their size, and no
    // thumbnail of the uncorrected photo.
    const std::vector<uint8_t> data = orvJpegDataWithCompress(corrected, kCopyQuality, metadata);
    corrected = nullptr;
    return !data.empty() && OrvTSFileManager::writeDataAtomically(data, output);
}
