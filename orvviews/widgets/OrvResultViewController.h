#pragma once
#include <optional>
#include <string>

#include "orvviews/widgets/OrvComponentsViewController.h"

// The base of screens that end in a result. It receives the saving options of its option set;
// the saving road itself builds on these fields.
class OrvResultViewController : public OrvComponentsViewController {
    ORV_DECLARE_CLASS(OrvResultViewController)
  public:
    void init() override;

    bool saveToTemp() const { return saveToTemp_; }
    void setSaveToTemp(bool on) { saveToTemp_ = on; }
    bool saveToAlbum() const { return saveToAlbum_; }
    void setSaveToAlbum(bool on) { saveToAlbum_ = on; }
    const std::optional<std::string>& saveToAlbumName() const { return saveToAlbumName_; }
    void setSaveToAlbumName(std::optional<std::string> name) { saveToAlbumName_ = std::move(name); }
    double outputCompress() const { return outputCompress_; }
    void setOutputCompress(double compress) { outputCompress_ = compress; }
    // Whether the saving road shows its progress in the hub.
    bool enableShowHub = true;

  private:
    bool saveToTemp_ = false;
    bool saveToAlbum_ = false;
    std::optional<std::string> saveToAlbumName_;
    double outputCompress_ = 0;
};
