#pragma once
#include <optional>
#include <string>

#include "orvviews/widgets/OrvOptions.h"

// Options of a screen that ends in a result: where to save it and how well to compress it.
class OrvResultOptions : public OrvOptions {
    ORV_DECLARE_CLASS(OrvResultOptions)
  public:
    void initOptions() override;

    bool saveToTemp() const { return saveToTemp_; }
    void setSaveToTemp(bool on) { saveToTemp_ = on; }
    bool saveToAlbum() const { return saveToAlbum_; }
    void setSaveToAlbum(bool on) { saveToAlbum_ = on; }
    // Null means the default album.
    const std::optional<std::string>& saveToAlbumName() const { return saveToAlbumName_; }
    void setSaveToAlbumName(std::optional<std::string> name) { saveToAlbumName_ = std::move(name); }
    // JPEG quality from 0 to 1. The setter stores what it is given; the getter clamps and
    // writes the clamped value back, so a later read has repaired the field.
    double outputCompress();
    void setOutputCompress(double compress) { outputCompress_ = compress; }

    // The base's controller with saveToAlbum, saveToTemp, saveToAlbumName and outputCompress
    // copied onto it, in that order.
    std::shared_ptr<OrvComponentsViewController> componentInstance() override;

  private:
    bool saveToTemp_ = false;
    bool saveToAlbum_ = false;
    std::optional<std::string> saveToAlbumName_;
    double outputCompress_ = 0;
};
