#pragma once
// The strip of brushes under a brush tool's picture. It offers the library's brushes (or a
// fixed group of them), remembers the user's last brush per tool in the user defaults, and
// follows changes of the brush library. A subclass supplies the list and hears the selection.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvBrushLocalPackageDelegate.h"
#include "orvviews/widgets/smudge/OrvBrushTableViewInterface.h"
#include "platform/ui/View.h"

class OrvBrushBarViewBase : public ui::View, public OrvBrushLocalPackageDelegate {
    ORV_DECLARE_CLASS(OrvBrushBarViewBase)
  public:
    // Whether the choice is remembered; off until set.
    bool saveLastBrush() const { return saveLastBrush_; }
    void setSaveLastBrush(bool on) { saveLastBrush_ = on; }
    // Keeps the choices of two tools apart: the key is "orv_lastbrush_<action>".
    long action() const { return action_; }
    void setAction(long action) { action_ = action; }
    double cellWidth() const { return cellWidth_; }
    // Widths of 0 or less are ignored.
    void setCellWidth(double width);
    // Brush codes to offer; empty offers every brush and follows the library's changes.
    const std::vector<std::string>& brushGroup() const { return brushGroup_; }
    void setBrushGroup(std::vector<std::string> group) { brushGroup_ = std::move(group); }
    // The list, a view that offers OrvBrushTableViewInterface; none in the base.
    virtual std::shared_ptr<ui::View> tableView() const { return nullptr; }

    // Builds the list, selects the last brush (else the second of the list: the first is kept
    // for a special entry and a remembered eraser is never restored) and announces it.
    void loadBrushes();
    // Every brush of the library, in its order.
    std::vector<std::shared_ptr<OrvBrush>> buildBrushItems();
    virtual void refreshBrushData() {}
    // The user picked a brush: remembered, then a subclass acts on it.
    void selectBrush(const std::shared_ptr<OrvBrush>& brush);
    virtual void notifySelectedBrush(const std::shared_ptr<OrvBrush>& brush) {}
    std::shared_ptr<OrvBrush> loadLastBrush();
    void saveLastBrush(const std::shared_ptr<OrvBrush>& brush);

    // The library added or changed brushes.
    void brushManager(OrvBrushLocalPackage& package, const std::shared_ptr<OrvBrush>& item,
                      long status) override;
    void viewWillDestory() override;

  protected:
    // For subclasses: the base's operations leave them alone.
    std::vector<std::shared_ptr<OrvBrush>> brushes;
    std::shared_ptr<OrvBrush> lastBrush;
    bool mNeedSelected = false;
    long currentBrushSize = 0;

  private:
    std::string lastBrushKey() const;
    OrvBrushTableViewInterface* tableInterface() const;

    bool saveLastBrush_ = false;
    long action_ = 0;
    double cellWidth_ = 0;
    std::vector<std::string> brushGroup_;
};
