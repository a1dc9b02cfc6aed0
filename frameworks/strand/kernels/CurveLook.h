#pragma once
// A look of the catalogue made of colour operations on each pixel (a channel mixer,
// saturation, tone curves, split toning, faded blacks), baked into a colour table when it is
// read, plus grain and a vignette; applied in one pass and blended with the picture by its
// strength.

#include <array>
#include <memory>
#include <nlohmann/json_fwd.hpp>

#include "frameworks/strand/kernels/ColorTable.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "frameworks/strand/kernels/ToneCurve.h"
#include "platform/gfx/Color.h"

namespace orv::strand {

class CurveLook : public Look {
  public:
    struct Recipe {
        // Rows give red, green and blue out of red, green and blue in.
        std::array<std::array<float, 3>, 3> mixer = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
        float saturation = 0;  // −1 (grey) to 1
        float vibrance = 0;    // −1 to 1: saturation that spares colours already strong
        ToneCurve red, green, blue, master;
        gfx::Color shadowTint, highlightTint;
        float shadowAmount = 0, highlightAmount = 0;  // 0 to 1
        float balance = 0;   // −1 (toward the shadows' tint) to 1 (the highlights')
        float fade = 0;      // 0 to 1: lifted blacks
        float grain = 0;     // 0 to 1, published as "grain" when above 0
        float vignette = 0;  // 0 to 1, published as "vignette" when above 0
    };

    // The recipe of a catalogue entry (see resources/packages/filters/README.md); throws
    // std::runtime_error saying what is wrong with it.
    static Recipe recipeFrom(const nlohmann::json& recipe);

    explicit CurveLook(const Recipe& recipe);

    LookSettings defaults() const override;
    gfx::BitmapPtr apply(const gfx::Bitmap& src, const LookSettings& settings) const override;

  private:
    static void shade(const Recipe& recipe, std::array<float, 3>& rgb);

    ColorTable table_;
    float grain_;
    float vignette_;
};

}  // namespace orv::strand
