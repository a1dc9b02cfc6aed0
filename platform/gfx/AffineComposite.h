#pragma once
// Composes a picture seen through an affine transform (turned, scaled, skewed) onto 32-bit
// premultiplied pixels: bilinear samples of the picture, its edge pixels padded outward, weighed
// by an A8 coverage and composed source over or destination out.
//
// pixman does the same job through its general path, a pixel at a time; this is the bitmap
// context's fast path for it (brush stamps turned along a stroke), eight pixels at a time with
// AVX2 (one at a time where rows are too short or too far out for that). The arithmetic is
// pixman's, so both give the same bytes: pixel centres mapped in 16.16 fixed point and stepped
// along a row, 7-bit bilinear weights with the sum truncated, and x × a / 255 rounded to
// nearest.
//
// The picture and the destination must have the same byte order; only the fourth byte (alpha)
// is told apart from the others.

#include <pixman.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace orv::gfx {

class AffineComposite {
  public:
    enum class Op { Over, OutReverse };

    struct Picture {
        const uint8_t* pixels = nullptr;
        int width = 0, height = 0;
        size_t rowBytes = 0;
        bool opaque = false;  // the fourth byte is padding and reads as 255
    };
    // Pixels of a box, starting at its top left pixel.
    struct Target {
        uint8_t* pixels = nullptr;
        size_t rowBytes = 0;
        int width = 0, height = 0;
    };
    // A8 coverage over the same box; without pixels every pixel is fully covered.
    struct Mask {
        const uint8_t* pixels = nullptr;
        size_t rowBytes = 0;
    };

    // `boxToPicture` maps the box's pixels (0, 0 its top left corner) to picture pixels, as
    // pixman holds a transform; its last row must be 0, 0, 1. `alpha` multiplies the coverage.
    AffineComposite(const Picture& picture, const pixman_transform_t& boxToPicture, Op op,
                    uint8_t alpha);

    void run(const Target& target, const Mask& mask) const;

    // Whether this processor runs the vector loop (AVX2). Without it, one pixel at a time, this
    // is slower than pixman's own path.
    static bool vectorised();

  private:
    // Row j: the pixels [begin, end) of `width` with some coverage (times alpha; `coverage`
    // holds the whole row, zero outside the span) composed onto `dest`, the row's first pixel.
    void composeRow(int j, uint8_t* coverage, uint8_t* dest, int begin, int end, int width) const;
    // The pixels whose four neighbours all lie in the picture, from `begin` up to `end`, when the
    // first is sampled at (x, y): an interval, since the samples lie on a line.
    std::pair<int, int> insideRun(int64_t x, int64_t y, int begin, int end) const;
    bool inside(int64_t x, int64_t y) const;
    // Whether a row from (x, y) keeps to 32-bit coordinates and picture offsets, as the vector
    // loop wants.
    bool walkFits(int64_t x, int64_t y, int width) const;
    // One pixel at a time, the first sampled at (x, y).
    void composeEach(int64_t x, int64_t y, const uint8_t* coverage, uint8_t* dest, int n) const;
    uint32_t sample(int64_t x, int64_t y) const;

    Picture picture_;
    int64_t ux_, uy_;  // one pixel to the right, in the picture
    int64_t vx_, vy_;  // one row down
    int64_t x0_, y0_;  // the centre of the box's first pixel, less half a picture pixel
    Op op_;
    uint8_t alpha_;
};

}  // namespace orv::gfx
