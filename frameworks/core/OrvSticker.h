#pragma once
// A sticker: a picture of the local package or made at run time, or a text sticker whose
// texts lie on its picture.

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvStickerText.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Object.h"

class OrvSticker : public rt::Object {
    ORV_DECLARE_CLASS(OrvSticker)
  public:
    enum Type : int { kImage = 1, kText = 2 };
    static std::shared_ptr<OrvSticker> stickerWithType(int type);

    int type() const { return type_; }
    // Identity in the local package; 0 for a sticker made at run time.
    long idt() const { return idt_; }
    void setIdt(long idt) { idt_ = idt; }
    long categoryId() const { return categoryId_; }
    void setCategoryId(long id) { categoryId_ = id; }
    const std::string& previewName() const { return previewName_; }
    void setPreviewName(std::string name) { previewName_ = std::move(name); }
    const std::string& stickerImageName() const { return stickerImageName_; }
    void setStickerImageName(std::string name) { stickerImageName_ = std::move(name); }
    // The picture; a package sticker's may be emptied at any time, the package loads it again.
    // Guarded, because composition on a worker thread empties it while the screen may read it.
    gfx::ImagePtr image() const;
    void setImage(gfx::ImagePtr image);
    // Size of the picture at scale 1, in points.
    const gfx::Size& size() const { return size_; }
    void setSize(const gfx::Size& size) { size_ = size; }
    using Texts = std::vector<std::shared_ptr<OrvStickerText>>;
    const std::optional<Texts>& texts() const { return texts_; }
    void setTexts(std::optional<Texts> texts) { texts_ = std::move(texts); }

  private:
    int type_ = kImage;
    long idt_ = 0;
    long categoryId_ = 0;
    std::string previewName_;
    std::string stickerImageName_;
    mutable std::mutex imageMutex_;
    gfx::ImagePtr image_;
    gfx::Size size_;
    std::optional<Texts> texts_;
};
