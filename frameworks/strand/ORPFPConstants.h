#pragma once
// The names the pipe's filters, configs and properties are known by. The filter names are the
// codes the tools pass.

inline constexpr const char* ORPFPOrvkitImageFilter_TYPE_NAME = "ORPFPOrvkitImageFilter";
inline constexpr const char* ORPFPColorAdjustFilter_TYPE_NAME = "ORPFPColorAdjustFilter";
inline constexpr const char* ORPFPOrvkitFaceEditPlasticFilter_TYPE_NAME =
    "ORPFPOrvkitFaceEditPlasticFilter";
inline constexpr const char* ORPFPColorCorrectionFilter_TYPE_NAME = "ORPFPColorCorrectionFilter";

inline constexpr const char* ORPFPOrvkitImageFilter_CONFIG_NAME = "name";
inline constexpr const char* ORPFPOrvkitImageFilter_PROP_PARAM = "param";
inline constexpr const char* ORPFPColorCorrectionFilter_PROP_PARAM = "param";

inline constexpr const char* ORPFPOrvkitImageFilter_NAME_Aperture = "_IEBAperture";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_HDR = "_IECHdr";
inline constexpr const char* ORPFPColorAdjustFilter_NAME_Adjust = "_IECAdjust";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_HolyLight = "_IECHoly";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_Vignette = "_IELVignette";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_Sharpen = "_IEBSharpen";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_SkinHazy = "_IESSkinHazy";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_Gaussian = "_IEBGaussian";
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_SkinEdit = "_IESSkinEdit";
// The camera's crop to a width-to-height ratio (property: the ratio).
inline constexpr const char* ORPFPOrvkitImageFilter_NAME_AspectCrop = "_IEBAspectCrop";

// The items of the colour-adjust filter, in the order the filter applies them.
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_WhiteBalance = "whiteBalance";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_HighlightShadow = "highlightShadow";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_Sharpen = "sharpen";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_Brightness = "brightness";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_Contrast = "contrast";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_Saturation = "saturation";
inline constexpr const char* ORPFPColorAdjustFilter_PROP_TYPE_Exposure = "exposure";
