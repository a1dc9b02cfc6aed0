#include "frameworks/strand/ORPFilterPipe.h"

ORV_DEFINE_CLASS(ORPFilterPipe, rt::Object)

gfx::ImagePtr ORPFilterPipe::runOnce(const gfx::ImagePtr& image,
                                     const std::function<void(ORPFilterPipe&)>& addFilters) {
    auto pipe = rt::make<ORPFilterPipe>();
    pipe->open();
    addFilters(*pipe);
    auto output = pipe->process(ORPFPImage::initWithUIImage(image));
    gfx::ImagePtr result = output ? output->getUIImage() : nullptr;
    pipe->close();
    return result;
}

void ORPFilterPipe::init() {
    rt::Object::init();
    context_ = rt::make<ORPFPContext>();
}

void ORPFilterPipe::open() {
    open_ = true;
}

void ORPFilterPipe::close() {
    filters_.clear();
    open_ = false;
}

void ORPFilterPipe::clearFilters() {
    filters_.clear();
}

std::shared_ptr<ORPFPFilter> ORPFilterPipe::getFilter(long position) const {
    auto it = filters_.find(position);
    return it == filters_.end() ? nullptr : it->second;
}

void ORPFilterPipe::deleteFilterAt(long position) {
    filters_.erase(position);
}

void ORPFilterPipe::addFilter(std::shared_ptr<ORPFPFilter> filter, long at) {
    if (filter) filters_[at] = std::move(filter);
}

std::shared_ptr<ORPFPImage> ORPFilterPipe::process(const std::shared_ptr<ORPFPImage>& image) const {
    if (!open_ || filters_.empty() || !image) return image;
    const gfx::BitmapPtr& input = image->bitmap();
    if (!input || input->width() == 0 || input->height() == 0) return image;
    gfx::BitmapPtr pixels = input;
    for (const auto& [position, filter] : filters_) {
        if (auto out = filter->apply(pixels)) pixels = std::move(out);
    }
    return pixels == input ? image : ORPFPImage::withBitmap(std::move(pixels), image->scale());
}
