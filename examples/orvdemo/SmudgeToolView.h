#pragma once
// The demo's brush tool screen: cancel, title and apply at the top; the canvas; undo, redo, a
// compare button that shows the photo as it was while held, and three brush sizes; the brush
// bar at the bottom. The round cursor lies on the canvas and lets touches through.

#include <array>
#include <memory>

#include "examples/orvdemo/BrushBarView.h"
#include "orvviews/views/OrvSmudgeImageViewWrap.h"
#include "orvviews/widgets/smudge/OrvSmudgeViewBase.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

namespace orvdemo {

class SmudgeToolView : public OrvSmudgeViewBase {
    ORV_DECLARE_CLASS(SmudgeToolView)
  public:
    static constexpr double kTopBar = 56;
    static constexpr double kControls = 52;
    static constexpr double kBrushBar = 84;

    void initWithFrame(const gfx::Rect& frame) override;
    std::shared_ptr<ui::View> smudgeWrap() const override { return wrap_; }
    std::shared_ptr<ui::View> sizeAnimView() const override { return cursor_; }

    const std::shared_ptr<OrvSmudgeImageViewWrap>& wrap() const { return wrap_; }
    const std::shared_ptr<BrushBarView>& brushBar() const { return brushBar_; }
    const std::shared_ptr<ui::Label>& titleLabel() const { return titleLabel_; }
    const std::shared_ptr<ui::Button>& cancelButton() const { return cancelButton_; }
    const std::shared_ptr<ui::Button>& doneButton() const { return doneButton_; }
    const std::shared_ptr<ui::Button>& undoButton() const { return undoButton_; }
    const std::shared_ptr<ui::Button>& redoButton() const { return redoButton_; }
    const std::shared_ptr<ui::Button>& compareButton() const { return compareButton_; }
    // Small, medium and large, the size codes 1, 2 and 3.
    const std::shared_ptr<ui::Button>& sizeButton(long code) const {
        return sizeButtons_[code - 1];
    }
    // Marks the chosen size.
    void showSizeChosen(long code);

  private:
    void buildControls(double top);

    std::shared_ptr<OrvSmudgeImageViewWrap> wrap_;
    std::shared_ptr<ui::View> cursor_;
    std::shared_ptr<BrushBarView> brushBar_;
    std::shared_ptr<ui::Label> titleLabel_;
    std::shared_ptr<ui::Button> cancelButton_;
    std::shared_ptr<ui::Button> doneButton_;
    std::shared_ptr<ui::Button> undoButton_;
    std::shared_ptr<ui::Button> redoButton_;
    std::shared_ptr<ui::Button> compareButton_;
    std::array<std::shared_ptr<ui::Button>, 3> sizeButtons_;
};

}  // namespace orvdemo
