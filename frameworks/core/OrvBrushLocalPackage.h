#pragma once
// The brushes that ship with the library: a JSON catalogue of brushes with their PNG shapes and
// thumbnails, under the resources' packages/brushes folder (its README tells the format). The
// catalogue is read at first use; a missing or broken one is logged and gives no brushes.

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvBrushLocalPackageDelegate.h"
#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

namespace orv::ui {
class ImageView;
}

// The eraser's code; the brush tools look it up to offer erasing whatever the user chose.
inline constexpr const char* orvEraserBrushCode = "eraser";

class OrvBrushLocalPackage : public rt::Object {
    ORV_DECLARE_CLASS(OrvBrushLocalPackage)
  public:
    // Folders of the catalogue and of the pictures, in the main bundle's resources.
    static constexpr const char* kDirectory = "packages/brushes";
    static constexpr const char* kImageDirectory = "packages/brushes/images";
    // Statuses told to the delegates.
    static constexpr long kStatusAdded = 20;
    static constexpr long kStatusChanged = 100;

    // The one package of the process.
    static std::shared_ptr<OrvBrushLocalPackage> package();

    // The brushes' codes, in the catalogue's order.
    std::vector<std::string> codes() const;
    // A fresh brush each call, its picture not loaded; nullopt asks for the catalogue's default
    // brush. Null for a code the catalogue does not have.
    std::shared_ptr<OrvBrush> brushWithCode(const std::optional<std::string>& code) const;
    // The brushes of those codes in that order, unknown codes left out.
    std::vector<std::shared_ptr<OrvBrush>> brushWithCodes(
        const std::vector<std::string>& codes) const;
    // Fills the brush's picture from its PNG at the best resolution for the screen, unless it has
    // one already; true when it has one afterwards. The picture has scale 1, so its size is its
    // pixel size. Safe on any thread.
    bool loadBrushData(const std::shared_ptr<OrvBrush>& brush) const;
    // Shows the brush's thumbnail in the view, or nothing when it has none. Loads at once.
    void loadThumbWithBrush(const std::shared_ptr<OrvBrush>& brush,
                            const std::shared_ptr<ui::ImageView>& imageView);
    // Thumbnails load at once, so no load is ever pending for a view.
    void cancelLoadImage(const std::shared_ptr<ui::ImageView>& imageView);

    void appenDelegate(std::weak_ptr<OrvBrushLocalPackageDelegate> delegate);
    void removeDelegate(const OrvBrushLocalPackageDelegate* delegate);

    // Forgets the catalogue, so that the next call reads it again from the main bundle's
    // current resources, and tells the delegates the brushes changed (tests).
    void reloadForTesting();

  private:
    struct Catalogue;
    std::shared_ptr<const Catalogue> catalogue() const;
    void notifyDelegates(long status);

    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Catalogue> catalogue_;
    std::mutex delegatesMutex_;
    std::vector<std::weak_ptr<OrvBrushLocalPackageDelegate>> delegates_;
};
