#pragma once
// Film grain: a fixed noise (the same picture gets the same grain, so a preview does not
// shimmer while a slider moves), handed to the colour table's pass, which adds it strongest in
// the midtones as film shows it.

#include <cstdint>

namespace orv::strand {

class FilmGrain {
  public:
    FilmGrain() = delete;
    // The noise of row `y`: `width` values in [−127, 127].
    static void noiseRow(int y, int width, int8_t* noise);
    // ColorTable::Finish::grain for an amount from 0 to 1.
    static int strength(float amount);
};

}  // namespace orv::strand
