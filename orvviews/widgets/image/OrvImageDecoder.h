#pragma once
// The base of the decoders: the encoded bytes so far, the canvas they describe, and the image
// types a decoder accepts. Subclasses fill the fields; everyone else only reads them.

#include <cstdint>
#include <memory>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "platform/codec/ImageSource.h"
#include "platform/rt/Object.h"

class OrvImageDecoder : public rt::Object {
    ORV_DECLARE_CLASS(OrvImageDecoder)
  public:
    using Data = codec::ImageSource::Data;

    const Data& data() const { return data_; }
    uint64_t type() const { return type_; }
    double scale() const { return scale_; }
    uint64_t width() const { return width_; }
    uint64_t height() const { return height_; }
    int64_t orientation() const { return orientation_; }
    bool dataCompleted() const { return dataCompleted_; }

    // The type told by the magic bytes; `bytes` must hold at least 16 bytes.
    uint64_t getImageType(const uint8_t* bytes) const;
    // The image types this decoder reads; none in the base class.
    virtual std::vector<uint64_t> supportedTypes() const { return {}; }
    bool validImageType(uint64_t type) const;

  protected:
    Data data_;
    uint64_t type_ = 0;
    double scale_ = 1;
    uint64_t width_ = 0;
    uint64_t height_ = 0;
    int64_t orientation_ = 0;
    bool dataCompleted_ = false;
};
