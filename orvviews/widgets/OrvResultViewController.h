#pragma once
// The base of screens that end in a result. The result of a user's work leaves the tool's
// background thread through asyncProcessingIfNeedSave(): it is saved where the options say (a
// temporary JPEG or the album) and handed to the tool on the main thread.

#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvResult.h"
#include "orvviews/widgets/OrvComponentsViewController.h"

class OrvSticker;
class OrvStickerResult;
class OrvWaterMarkOption;

class OrvResultViewController : public OrvComponentsViewController {
    ORV_DECLARE_CLASS(OrvResultViewController)
  public:
    using ResultPtr = std::shared_ptr<OrvResult>;

    void init() override;
    // Tests the album access when saveToAlbum is on at this moment.
    void viewDidLoad() override;

    bool saveToTemp() const { return saveToTemp_; }
    void setSaveToTemp(bool on) { saveToTemp_ = on; }
    bool saveToAlbum() const { return saveToAlbum_; }
    void setSaveToAlbum(bool on) { saveToAlbum_ = on; }
    bool hasAlbumAccess() const { return hasAlbumAccess_; }
    const std::optional<std::string>& saveToAlbumName() const { return saveToAlbumName_; }
    void setSaveToAlbumName(std::optional<std::string> name) { saveToAlbumName_ = std::move(name); }
    // JPEG quality from 0 to 1; the getter clamps and writes the clamped value back.
    double outputCompress();
    void setOutputCompress(double compress) { outputCompress_ = compress; }
    const std::shared_ptr<OrvWaterMarkOption>& waterMarkOption() const { return waterMarkOption_; }
    void setWaterMarkOption(std::shared_ptr<OrvWaterMarkOption> option) {
        waterMarkOption_ = std::move(option);
    }

    // The photo with the water mark of waterMarkOption stamped on it (the same image when there
    // is no usable option): the picture, the text, or both side by side along the chosen edge.
    gfx::ImagePtr addWaterMarkToImage(const gfx::ImagePtr& image) const;
    // Where one mark of a block of `displaySize` lies on an image of `imageSize`, at angle 0.
    // A text sticker sits after the picture when markTextPosition is `defaultTextPosition`.
    std::shared_ptr<OrvStickerResult> createStickResult(const std::shared_ptr<OrvSticker>& sticker,
                                                        gfx::Size displaySize, gfx::Size imageSize,
                                                        int defaultTextPosition) const;

    // The one entry of the saving road, called by a tool as the last step of its edit. On the
    // main thread it only delivers; on any other thread it saves, delivers and counts.
    void asyncProcessingIfNeedSave(const ResultPtr& result);

    // The finished result, on the main thread.
    virtual void notifyProcessingWithResult(const ResultPtr& result);
    // On the background thread before any saving; true takes the result over.
    virtual bool asyncNotifyProcessingWithResult(const ResultPtr& result);

    // Posts notifyProcessingWithResult() to the main thread without waiting.
    virtual void backUIThreadNotifyProcessingWithResult(const ResultPtr& result);
    virtual void saveToTempWithResult(const ResultPtr& result);
    virtual void saveToAlbumWithResult(const ResultPtr& result);
    // The metadata of the photo the result was made from (its camera, dates and place), which a
    // saved result without metadata of its own takes. Called on the saving thread; none here.
    virtual codec::ImageMetadata sourceMetadata() { return {}; }

  protected:
    // Whether the saving road shows its progress in the hub.
    bool enableShowHub = true;

  private:
    // Gives a result without metadata the source's, then fits it to the final pixels.
    void prepareMetadata(const ResultPtr& result);
    void onAlbumSaved(const ResultPtr& result, std::shared_ptr<OrvTSAssetInterface> asset,
                      const std::shared_ptr<rt::Error>& error);

    bool saveToTemp_ = false;
    bool saveToAlbum_ = false;
    bool hasAlbumAccess_ = false;
    std::optional<std::string> saveToAlbumName_;
    double outputCompress_ = 0;
    std::shared_ptr<OrvWaterMarkOption> waterMarkOption_;
};
