#include "orvviews/widgets/OrvEditActionType.h"

std::vector<long> OrvEditActionType::entryActionTypes() {
    return {OrvEditActionTypeCuter, OrvEditActionTypeFilter, OrvEditActionTypeSticker};
}

std::vector<long> OrvEditActionType::multipleActionTypes() {
    return {OrvEditActionTypeSticker,  OrvEditActionTypeText,     OrvEditActionTypeFilter,
            OrvEditActionTypeSkin,     OrvEditActionTypeCuter,    OrvEditActionTypeSmudge,
            OrvEditActionTypePaint,    OrvEditActionTypeAdjust,   OrvEditActionTypeWipeFilter,
            OrvEditActionTypeAperture, OrvEditActionTypeHDR,      OrvEditActionTypeHolyLight,
            OrvEditActionTypeVignette, OrvEditActionTypeSharpness};
}

bool OrvEditActionType::isValid(long type) {
    return type >= OrvEditActionTypeCuter && type <= OrvEditActionTypeTurnAndCut;
}
