#pragma once
// The tools of the editors, by number, and the lists the editors offer by default. The numbers
// are stable: applications store and pass them.

#include <vector>

enum : long {
    OrvEditActionTypeCuter = 1,
    OrvEditActionTypeFilter = 2,
    OrvEditActionTypeSticker = 3,
    OrvEditActionTypeText = 4,
    OrvEditActionTypeSkin = 5,
    OrvEditActionTypeSmudge = 6,
    OrvEditActionTypePaint = 7,
    OrvEditActionTypeAdjust = 8,
    OrvEditActionTypeWipeFilter = 9,
    OrvEditActionTypeSharpness = 10,
    OrvEditActionTypeVignette = 11,
    OrvEditActionTypeAperture = 12,
    OrvEditActionTypeHolyLight = 13,
    OrvEditActionTypeHDR = 14,
    OrvEditActionTypeTabBar = 15,
    OrvEditActionTypeTurnAndCut = 16,
};

class OrvEditActionType {
  public:
    OrvEditActionType() = delete;

    // Crop, filter, stickers: the light editor's tools, in display order.
    static std::vector<long> entryActionTypes();
    // The multi-step editor's tools, in display order. The tab launcher and turn-and-cut are
    // left out but accepted when an application names them.
    static std::vector<long> multipleActionTypes();
    // True for the numbers above.
    static bool isValid(long type);
};
