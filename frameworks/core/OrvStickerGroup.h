#pragma once
// A group of stickers in a category of the local sticker package.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvSticker.h"
#include "platform/rt/Object.h"

class OrvStickerGroup : public rt::Object {
    ORV_DECLARE_CLASS(OrvStickerGroup)
  public:
    static std::shared_ptr<OrvStickerGroup> group() { return rt::make<OrvStickerGroup>(); }

    long idt() const { return idt_; }
    void setIdt(long idt) { idt_ = idt; }
    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    using Stickers = std::vector<std::shared_ptr<OrvSticker>>;
    const Stickers& stickers() const { return stickers_; }
    void setStickers(Stickers stickers) { stickers_ = std::move(stickers); }

  private:
    long idt_ = 0;
    std::string name_;
    Stickers stickers_;
};
