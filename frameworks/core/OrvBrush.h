#pragma once
// A brush of the smudge tools: a shape whose alpha is stamped along a stroke, and how each stamp
// turns, moves and grows.

#include <memory>
#include <mutex>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvBrush : public rt::Object {
    ORV_DECLARE_CLASS(OrvBrush)
  public:
    // brushType
    static constexpr long kEraser = 1;
    static constexpr long kMosaic = 2;
    static constexpr long kStamp = 3;
    static constexpr long kOnline = 4;  // the entry that opens the online store
    // rotateType; any other value follows the stroke's direction.
    static constexpr long kRotateNone = 1;
    static constexpr long kRotateRandom = 3;
    static constexpr long kRotateJitter = 4;
    // positionType: stamps scattered by about their own width.
    static constexpr long kPositionRandom = 2;
    // sizeType: each stamp its own size and alpha.
    static constexpr long kSizeRandom = 2;

    // A brush of that type with no picture.
    static std::shared_ptr<OrvBrush> brushWithType(long type);

    // The shape; only its alpha counts. Guarded, as packages load it on worker threads.
    gfx::ImagePtr image() const;
    void setImage(gfx::ImagePtr image);
    const std::string& code() const { return code_; }
    void setCode(std::string code) { code_ = std::move(code); }
    long brushType() const { return brushType_; }
    void setBrushType(long type) { brushType_ = type; }
    long rotateType() const { return rotateType_; }
    void setRotateType(long type) { rotateType_ = type; }
    long positionType() const { return positionType_; }
    void setPositionType(long type) { positionType_ = type; }
    long sizeType() const { return sizeType_; }
    void setSizeType(long type) { sizeType_ = type; }
    // The name shown under the brush, in the screen's language; empty when it has none.
    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    // PNG names in the package's pictures, without scale suffix and extension.
    const std::string& imageName() const { return imageName_; }
    void setImageName(std::string name) { imageName_ = std::move(name); }
    const std::string& thumbName() const { return thumbName_; }
    void setThumbName(std::string name) { thumbName_ = std::move(name); }

  private:
    mutable std::mutex imageMutex_;
    gfx::ImagePtr image_;
    std::string code_;
    long brushType_ = kStamp;
    long rotateType_ = 0;
    long positionType_ = 0;
    long sizeType_ = 0;
    std::string name_;
    std::string imageName_;
    std::string thumbName_;
};
