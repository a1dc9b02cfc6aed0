#pragma once
// The record that travels from a tool back to the application: the finished picture and where
// it was saved. The saving road (temporary file, album) grows on this record.

#include <memory>
#include <optional>
#include <string>

#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvResult : public orv::rt::Object {
    ORV_DECLARE_CLASS(OrvResult)
  public:
    orv::gfx::ImagePtr image() const { return image_; }
    void setImage(orv::gfx::ImagePtr image) { image_ = std::move(image); }
    const std::optional<std::string>& imagePath() const { return imagePath_; }
    void setImagePath(std::optional<std::string> path) { imagePath_ = std::move(path); }

  private:
    orv::gfx::ImagePtr image_;
    std::optional<std::string> imagePath_;
};
