#pragma once
// The stickers that ship with the library: a JSON catalogue of categories, groups and stickers
// with their PNG pictures, under the resources' packages/stickers folder (its README tells the
// format). The catalogue is read at first use; a missing or broken one is logged and gives no
// categories.

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvSticker.h"
#include "frameworks/core/OrvStickerCategory.h"
#include "platform/rt/Object.h"

class OrvStickerLocalPackage : public rt::Object {
    ORV_DECLARE_CLASS(OrvStickerLocalPackage)
  public:
    // Folders of the catalogue and of the pictures, in the main bundle's resources.
    static constexpr const char* kDirectory = "packages/stickers";
    static constexpr const char* kImageDirectory = "packages/stickers/images";

    // The one package of the process.
    static std::shared_ptr<OrvStickerLocalPackage> package();

    // The catalogue's categories, in its order.
    std::vector<std::shared_ptr<OrvStickerCategory>> categories() const;
    // The category with that id; null when there is none.
    std::shared_ptr<OrvStickerCategory> categorieWithIdt(long idt) const;
    // A fresh sticker each call, which the caller may change freely, its picture not loaded;
    // null for an id the catalogue does not have.
    std::shared_ptr<OrvSticker> stickerWithIdt(uint64_t idt) const;
    // Fills the sticker's picture from its PNG at the best scale for the screen, unless it has
    // one already. Safe on any thread. A missing picture is logged and leaves `image` empty.
    void loadStickerData(const std::shared_ptr<OrvSticker>& sticker) const;

    // Forgets the catalogue, so that the next call reads it again from the main bundle's
    // current resources (tests).
    void reloadForTesting();

  private:
    struct Catalogue;
    std::shared_ptr<const Catalogue> catalogue() const;

    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Catalogue> catalogue_;
};
