#include "frameworks/core/OrvResult.h"

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"

ORV_DEFINE_CLASS(OrvResult, rt::Object)

std::string OrvResult::buildTempFile() const {
    return OrvTSFileManager::newTemporaryPath(".jpg");
}

void OrvResult::fixedMetadata() {
    metadata_ = orvMetadataMatchingImage(image_, metadata_);
}

gfx::ImagePtr OrvResult::loadResultImage() const {
    if (image_) return image_;
    if (imagePath_ && OrvTSFileManager::isExistFileAtPath(imagePath_)) {
        if (auto image = orvFullScreenImageWithContentsOfFile(*imagePath_)) return image;
    }
    if (imageAsset_) return orvFullScreenImageKeepOrientation(imageAsset_->fullResolutionImage());
    return nullptr;
}
