#pragma once
// The base of the library's list cells: clear behind and in its content view, no selected look
// of its own (each list draws its choice its way). Subclasses set up in orvInitView().

#include <memory>
#include <string>
#include <type_traits>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/TableViewCell.h"

class OrvTableViewCell : public ui::TableViewCell {
    ORV_DECLARE_CLASS(OrvTableViewCell)
  public:
    // A cell of class T, of the default style, with that reuse identifier.
    template <class T = OrvTableViewCell>
    static std::shared_ptr<T> initWithReuseIdentifier(std::string reuseIdentifier) {
        static_assert(std::is_base_of_v<OrvTableViewCell, T>);
        return ui::makeCell<T>(ui::TableViewCellStyle::Default, std::move(reuseIdentifier));
    }

    void initWithFrame(const gfx::Rect& frame) override;
    // Subclasses' own set-up, after the cell's.
    virtual void orvInitView() {}
};
