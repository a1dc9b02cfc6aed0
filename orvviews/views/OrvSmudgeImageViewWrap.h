#pragma once
// The on-screen canvas of a brush tool. The picture is fitted into the view and shown twice, the
// unchanged picture below and the painted canvas above; touches become strokes of a processor
// that works at the picture's displayed pixel size, which bounds the memory of the canvas and its
// history. The finished picture comes back at full size by stretching the canvas over it.

#include <cstdint>
#include <memory>

#include "orvviews/views/OrvSmudgeImageViewInterface.h"
#include "orvviews/widgets/smudge/OrvSimpleProcessor.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/View.h"

class OrvSmudgeImageViewWrap : public ui::View, public OrvSmudgeImageViewInterface {
    ORV_DECLARE_CLASS(OrvSmudgeImageViewWrap)
  public:
    void initWithFrame(const gfx::Rect& frame) override;

    // OrvSmudgeImageViewInterface
    void setImage(const gfx::ImagePtr& image) override;
    void setBrush(const std::shared_ptr<OrvBrush>& brush) override;
    void setBrushSize(long sizeCode) override;
    void setBrushCustomSize(double size) override;
    void setMaxUndoCount(uint64_t count) override;
    void undo() override;
    void redo() override;
    void showOriginal(bool original) override;
    void needUpdateLayout() override;
    gfx::ImagePtr getCanvasImage(const gfx::ImagePtr& image) override;
    gfx::ImagePtr getSmudgeImage() override;
    gfx::ImagePtr getOriginalImage() override { return originalImage_; }
    void destroy() override;
    void destroyHistory() override;
    std::weak_ptr<OrvSmudgeImageViewDelegate> delegate() const override { return delegate_; }
    void setDelegate(std::weak_ptr<OrvSmudgeImageViewDelegate> delegate) override {
        delegate_ = std::move(delegate);
    }

    // The picture fitted inside `maxSize` and centred; enlarged when smaller.
    static gfx::Rect getPreferImageRect(gfx::Size imageSize, gfx::Size maxSize);
    // A preset size code as a fraction of the screen's width: 3 → 0.2, 2 → 0.15, else 0.1.
    static double getBrushSizeValue(long sizeCode);
    uint64_t getUndoCount() const;
    uint64_t getRedoCount() const;
    // `mask` stretched over `image` at the image's size, composed normally.
    static gfx::ImagePtr mergeImage(const gfx::ImagePtr& image, const gfx::ImagePtr& mask);
    // Installs the displayed picture in the processor, then the undo limit, then the brush (a
    // mosaic brush builds its blocks from the picture it finds).
    void prepareForSmudge(const gfx::ImagePtr& image);
    // The processor, made on first use; subclasses hand out their own kind.
    virtual std::shared_ptr<OrvSimpleProcessor> getSmudgeProcessor();
    // Loads the brush (the library's default when none was chosen) and gives it to the
    // processor at the preset size. A brush that cannot load leaves the processor's brush as it
    // was.
    void updateBrushSettings();
    void notifySmudgeActionChange();

    const std::shared_ptr<ui::ImageView>& smudgeImageView() const { return smudgeImageView_; }
    const std::shared_ptr<ui::ImageView>& backgroundImageView() const {
        return backgroundImageView_;
    }

    void touchesBegan(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesMoved(const ui::TouchSet& touches, ui::Event* event) override;
    void touchesEnded(const ui::TouchSet& touches, ui::Event* event) override;

  protected:
    void orvInitView();
    std::shared_ptr<OrvSimpleProcessor> smudgeProcessor;

  private:
    long mBrushSize_ = 0;
    double mBrushCustomSize_ = 0;
    std::shared_ptr<OrvBrush> mBrush_;
    uint64_t mMaxUndoCount_ = 0;
    gfx::ImagePtr originalImage_;
    std::shared_ptr<ui::ImageView> smudgeImageView_;
    std::shared_ptr<ui::ImageView> backgroundImageView_;
    std::weak_ptr<OrvSmudgeImageViewDelegate> delegate_;
};
