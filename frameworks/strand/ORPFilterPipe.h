#pragma once
// The filter pipe: filters at numbered positions, applied in ascending order of position.

#include <functional>
#include <map>
#include <memory>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/ORPFPContext.h"
#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/ORPFPImage.h"
#include "platform/rt/Object.h"

class ORPFilterPipe : public rt::Object {
    ORV_DECLARE_CLASS(ORPFilterPipe)
  public:
    // The picture through a pipe of its own, opened, given its filters by `addFilters`, and
    // closed again; null when the pipe gives no pixels back.
    static gfx::ImagePtr runOnce(const gfx::ImagePtr& image,
                                 const std::function<void(ORPFilterPipe&)>& addFilters);

    void init() override;
    void open();
    void close();  // drops the filters; a closed pipe passes pictures through unchanged
    bool isOpen() const { return open_; }
    void clearFilters();
    const std::shared_ptr<ORPFPContext>& getContext() const { return context_; }
    std::shared_ptr<ORPFPFilter> getFilter(long position) const;
    void deleteFilterAt(long position);
    // Puts the filter at the position, replacing one that is there.
    void addFilter(std::shared_ptr<ORPFPFilter> filter, long at);
    // Every filter in order of position, synchronously; the input when there are none.
    std::shared_ptr<ORPFPImage> process(const std::shared_ptr<ORPFPImage>& image) const;

  private:
    std::shared_ptr<ORPFPContext> context_;
    std::map<long, std::shared_ptr<ORPFPFilter>> filters_;
    bool open_ = false;
};
