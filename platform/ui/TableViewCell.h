#pragma once
// One row of a table. What it shows goes in contentView, which fills the cell; behind it, a light
// grey selected background appears while the cell is selected (unless the selection style is
// None); a thin separator runs along the bottom when the table draws separators.
//
// The table hands a cell that scrolls out of sight to its reuse pool (when the cell has a reuse
// identifier) after calling prepareForReuse() and then viewNeedRest(); it calls viewNeedShowed()
// each time the cell comes into view.

#include <memory>
#include <optional>
#include <string>

#include "platform/ui/View.h"

namespace orv::ui {

class Label;

// The platform's numbering. Every style lays out as Default here: one text label.
enum class TableViewCellStyle { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
// The platform's numbering; every style but None shows the same grey.
enum class TableViewCellSelectionStyle { None = 0, Blue = 1, Gray = 2, Default = 3 };

class TableViewCell : public View {
    ORV_DECLARE_CLASS(TableViewCell)
  public:
    // The platform's size for a cell that no table has placed yet.
    static constexpr double kDefaultWidth = 320;
    static constexpr double kDefaultHeight = 44;
    static constexpr double kSelectionFadeSeconds = 0.25;

    // Keeps the style and the identifier, then runs initWithFrame() at the default size, which is
    // where subclasses (overriding initWithFrame, base first) set themselves up.
    void initWithStyle(TableViewCellStyle style, std::optional<std::string> reuseIdentifier);
    void initWithFrame(const gfx::Rect& frame) override;

    TableViewCellStyle style() const { return style_; }
    const std::optional<std::string>& reuseIdentifier() const { return reuseIdentifier_; }
    const std::shared_ptr<View>& contentView() const { return contentView_; }
    // A one-line label across the content view, made at first use.
    const std::shared_ptr<Label>& textLabel();
    const std::shared_ptr<View>& selectedBackgroundView() const { return selectedBackgroundView_; }

    TableViewCellSelectionStyle selectionStyle() const { return selectionStyle_; }
    void setSelectionStyle(TableViewCellSelectionStyle style);
    bool isSelected() const { return selected_; }
    void setSelected(bool selected) { setSelected(selected, false); }
    // Shows or hides the selected background; animated, it fades.
    virtual void setSelected(bool selected, bool animated);

    // Called before the cell goes to the reuse pool.
    virtual void prepareForReuse() {}
    // Resets the cell before reuse or removal; the table calls it after prepareForReuse().
    virtual void viewNeedRest() {}
    // The cell shows again.
    virtual void viewNeedShowed() {}

  private:
    friend class TableView;
    void setSeparatorHidden(bool hidden);
    void showSelection(bool animated);
    // A subview filling the cell that follows its size.
    std::shared_ptr<View> addFillingView();

    TableViewCellStyle style_ = TableViewCellStyle::Default;
    std::optional<std::string> reuseIdentifier_;
    std::shared_ptr<View> selectedBackgroundView_;
    std::shared_ptr<View> contentView_;
    std::shared_ptr<View> separatorView_;
    std::shared_ptr<Label> textLabel_;
    TableViewCellSelectionStyle selectionStyle_ = TableViewCellSelectionStyle::Default;
    bool selected_ = false;
};

// Makes a cell of class T through initWithStyle().
template <class T = TableViewCell>
std::shared_ptr<T> makeCell(TableViewCellStyle style, std::optional<std::string> reuseIdentifier) {
    return rt::makeWith<T>([&](T& cell) { cell.initWithStyle(style, std::move(reuseIdentifier)); });
}

}  // namespace orv::ui
