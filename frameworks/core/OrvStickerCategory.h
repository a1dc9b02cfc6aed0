#pragma once
// A category of the local sticker package: its groups of stickers, or (extendType 1) the
// all-stickers entry a sticker bar puts in front.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvStickerGroup.h"
#include "platform/rt/Object.h"

class OrvStickerCategory : public rt::Object {
    ORV_DECLARE_CLASS(OrvStickerCategory)
  public:
    enum ExtendType : int { kPlain = 0, kAllStickers = 1 };
    static std::shared_ptr<OrvStickerCategory> category() { return rt::make<OrvStickerCategory>(); }

    long idt() const { return idt_; }
    void setIdt(long idt) { idt_ = idt; }
    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    int extendType() const { return extendType_; }
    void setExtendType(int type) { extendType_ = type; }
    using Groups = std::vector<std::shared_ptr<OrvStickerGroup>>;
    const Groups& datas() const { return datas_; }
    void setDatas(Groups datas) { datas_ = std::move(datas); }

  private:
    long idt_ = 0;
    std::string name_;
    int extendType_ = kPlain;
    Groups datas_;
};
