#pragma once
// The base of the library's lists: no separators, a clear background, and one reuse identifier
// for its cells made from the class name, so that OrvFilterTable's cells are "OrvFilterTableCell".
// Subclasses set themselves up in orvInitView(), and make instances with table<T>() or
// tableWithHeight<T>().

#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/TableView.h"

class OrvTableView : public ui::TableView {
    ORV_DECLARE_CLASS(OrvTableView)
  public:
    // A table of class T with a zero frame.
    template <class T = OrvTableView>
    static std::shared_ptr<T> table(ui::TableViewStyle style = ui::TableViewStyle::Plain) {
        static_assert(std::is_base_of_v<OrvTableView, T>);
        return ui::makeTable<T>({}, style);
    }
    // A table of class T at the origin, as wide as the screen and `height` tall.
    template <class T = OrvTableView>
    static std::shared_ptr<T> tableWithHeight(
        float height, ui::TableViewStyle style = ui::TableViewStyle::Plain) {
        static_assert(std::is_base_of_v<OrvTableView, T>);
        return ui::makeTable<T>(screenWideFrame(height), style);
    }

    using ui::TableView::initWithFrame;
    void initWithFrame(const gfx::Rect& frame, ui::TableViewStyle style) override;
    // Subclasses' own set-up, after the table's.
    virtual void orvInitView() {}

    // The reuse identifier of this table's cells.
    const std::string& cellIdentifier() const { return cellIdentifier_; }

    // An empty header of the table's width and that height: the rows start below it.
    void setTopHeight(float height);
    // With true, deselects the selected row with animation; false does nothing.
    void deselectRow(bool animated);
    // Deselects the selected row without animation, its cell included.
    void deselectRow();
    // Sets the selected look of the row's cell when the row is on screen; nothing otherwise.
    void setCellSelected(bool selected, const std::optional<ui::IndexPath>& indexPath);
    // Reloads and selects the row that was selected again, without animation or scrolling.
    void reloadDataSaveSelected();

  private:
    static gfx::Rect screenWideFrame(float height);

    std::string cellIdentifier_;
};
