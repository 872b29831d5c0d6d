#include "ops/OpsCommandTable.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "ops/AdjustPreview.h"
#include "ops/ImageCommands.h"
#include "platform/StringTable.h"

#include <vector>

namespace {

using Values = std::span<const int>;

constexpr unsigned Counts(std::initializer_list<int> counts) {
    unsigned bits = 0;
    for (int n : counts) {
        bits |= 1u << n;
    }
    return bits;
}

// Handlers: each turns the values into the call of its core function.
template <int Code> int Filter(CommandContext& ctx, Values, int) {
    return RunImageCommand(ctx, Code);
}

template <int Code> int Geometry(CommandContext& ctx, Values, int) {
    return RunGeometryCommand(ctx, Code);
}

int Emboss(CommandContext& ctx, Values v, int) {
    FilterOptions options = DefaultFilterOptions(kEmboss);
    options.direction = v[0];
    options.depth = v[1];
    return RunImageCommand(ctx, kEmboss, options);
}

int Mosaic(CommandContext& ctx, Values v, int) {
    FilterOptions options = DefaultFilterOptions(kMosaic);
    options.cellSize = v[0];
    return RunImageCommand(ctx, kMosaic, options);
}

int FindEdge(CommandContext& ctx, Values v, int) {
    FilterOptions options = DefaultFilterOptions(kFindEdge);
    options.keepOriginal = v[0];
    options.colorMode = v[1];
    options.transparency = v[2];
    return RunImageCommand(ctx, kFindEdge, options);
}

int TraceContour(CommandContext& ctx, Values v, int) {
    FilterOptions options = DefaultFilterOptions(kTraceContour);
    options.darkestEdge = v[0];
    options.keepOriginal = v[1];
    options.colorMode = v[2];
    options.transparency = v[3];
    return RunImageCommand(ctx, kTraceContour, options);
}

// Two values set "All Channels"; six set red, green and blue (brightness and
// contrast each).
int BrightnessContrast(CommandContext& ctx, Values v, int given) {
    AdjustSettings settings = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    if (given == 6) {
        settings.channel = 1;
        for (int slot = 1; slot <= 3; ++slot) {
            settings.first[slot] = v[2 * (slot - 1)];
            settings.second[slot] = v[2 * (slot - 1) + 1];
        }
    } else {
        settings.first[0] = v[0];
        settings.second[0] = v[1];
    }
    return RunAdjustCommand(ctx, settings);
}

int HueSaturation(CommandContext& ctx, Values v, int) {
    AdjustSettings settings = AdjustSettings::Defaults(kAdjustHueSaturation);
    settings.first[0] = v[0];
    settings.second[0] = v[1];
    return RunAdjustCommand(ctx, settings);
}

// One value sets "All Channels"; three set red, green and blue.
int Gamma(CommandContext& ctx, Values v, int given) {
    AdjustSettings settings = AdjustSettings::Defaults(kAdjustGamma);
    if (given == 3) {
        settings.channel = 1;
        settings.first[1] = v[0];
        settings.first[2] = v[1];
        settings.first[3] = v[2];
    } else {
        settings.first[0] = v[0];
    }
    return RunAdjustCommand(ctx, settings);
}

int Rotate(CommandContext& ctx, Values v, int) {
    return RunRotate(ctx, v[0], v[1] == 0);
}

// A width or height of 0 (only as a default) keeps the current one.
int Rescale(CommandContext& ctx, Values v, int) {
    const CDibImage* image = ctx.doc.GetImage();
    if (image == nullptr) {
        return 0;
    }
    return RunRescale(ctx, v[0] > 0 ? v[0] : image->Width(), v[1] > 0 ? v[1] : image->Height(), v[2]);
}

constexpr OpsParameter kEmbossValues[] = {{"direction", 0, 7, 0}, {"depth", 1, 10, 2}};
constexpr OpsParameter kMosaicValues[] = {{"cell size", 2, 16, 4}};
constexpr OpsParameter kFindEdgeValues[] = {
    {"keep original", 0, 1, 1}, {"color mode", 0, 1, 1}, {"transparency", 0, 100, 0}};
constexpr OpsParameter kTraceContourValues[] = {{"darkest edge", 0, 1, 0},
                                                {"keep original", 0, 1, 0},
                                                {"color mode", 0, 1, 1},
                                                {"transparency", 0, 100, 0}};
constexpr OpsParameter kBrightnessContrastValues[] = {
    {"brightness", -100, 100, 0},     {"contrast", -100, 100, 0},        {"green brightness", -100, 100, 0},
    {"green contrast", -100, 100, 0}, {"blue brightness", -100, 100, 0}, {"blue contrast", -100, 100, 0}};
constexpr OpsParameter kHueSaturationValues[] = {{"hue", -180, 180, 0}, {"saturation", -100, 100, 0}};
constexpr OpsParameter kGammaValues[] = {
    {"gamma", 1, 79, 10}, {"green gamma", 1, 79, 10}, {"blue gamma", 1, 79, 10}};
constexpr OpsParameter kRotateValues[] = {{"degrees", 0, 359, 0, platform::IDS_DEGREE_OUT_OF_RANGE},
                                          {"direction", 0, 1, 0, 0, "cw,ccw"}};
constexpr OpsParameter kRescaleValues[] = {
    {"width", 1, kLargestPictureSide, 0, platform::IDS_WIDTH_OUT_OF_RANGE},
    {"height", 1, kLargestPictureSide, 0, platform::IDS_HEIGHT_OUT_OF_RANGE},
    {"dpi", 0, kMaxResolution, 0, platform::IDS_RESOLUTION_OUT_OF_RANGE}};

constexpr unsigned kNoValues = Counts({0});
constexpr unsigned kAnyLeading2 = Counts({0, 1, 2});
constexpr unsigned kAnyLeading3 = Counts({0, 1, 2, 3});
constexpr unsigned kAnyLeading4 = Counts({0, 1, 2, 3, 4});

const OpsCommand kCommands[] = {
    {32818, "Image", "&Brightness/Contrast...", "brightness-contrast", 6008, kBrightnessContrastValues,
     Counts({2, 6}), BrightnessContrast},
    {32819, "Image", "&Hue/Saturation...", "hue-saturation", 6009, kHueSaturationValues, Counts({2}),
     HueSaturation},
    {32820, "Image", "&Gamma...", "gamma", 6010, kGammaValues, Counts({1, 3}), Gamma},
    {32800, "Image", "Flip Horizontal", "flip-h", 0, {}, kNoValues, Geometry<kFlipHorizontal>},
    {32801, "Image", "Flip Vertical", "flip-v", 0, {}, kNoValues, Geometry<kFlipVertical>},
    {32799, "Image", "Rotate Right", "rotate-right", 0, {}, kNoValues, Geometry<kRotateRight>},
    {32798, "Image", "Rotate Left", "rotate-left", 0, {}, kNoValues, Geometry<kRotateLeft>},
    {32829, "Image", "Rotate...", "rotate", 6011, kRotateValues, Counts({1, 2}), Rotate},
    {32797, "Image", "Rescale...", "rescale", 6003, kRescaleValues, Counts({2, 3}), Rescale},
    {32783, "Image", "Invert", "invert", 0, {}, kNoValues, Filter<kInvert>},
    {32802, "Image", "Gray", "gray", 0, {}, kNoValues, Filter<kGray>},
    {32864, "Image/Color Level", "Red", "level-red", 0, {}, kNoValues, Filter<kLevelRed>},
    {32865, "Image/Color Level", "Green", "level-green", 0, {}, kNoValues, Filter<kLevelGreen>},
    {32866, "Image/Color Level", "Blue", "level-blue", 0, {}, kNoValues, Filter<kLevelBlue>},
    {32867, "Image/Color Level", "Cyan", "level-cyan", 0, {}, kNoValues, Filter<kLevelCyan>},
    {32868, "Image/Color Level", "Magenta", "level-magenta", 0, {}, kNoValues, Filter<kLevelMagenta>},
    {32869, "Image/Color Level", "Yellow", "level-yellow", 0, {}, kNoValues, Filter<kLevelYellow>},
    {32815, "Image/Color Level", "Forecolor", "level-fore", 0, {}, kNoValues, Filter<kLevelForeground>},
    {32816, "Image/Color Level", "Backcolor", "level-back", 0, {}, kNoValues, Filter<kLevelBackground>},
    {32794, "Filter/Blur", "Small", "blur-small", 0, {}, kNoValues, Filter<kBlurSmall>},
    {32793, "Filter/Blur", "More", "blur-more", 0, {}, kNoValues, Filter<kBlurMore>},
    {32792, "Filter/Blur", "Large", "blur-large", 0, {}, kNoValues, Filter<kBlurLarge>},
    {32789, "Filter/Sharpen", "Small", "sharpen-small", 0, {}, kNoValues, Filter<kSharpenSmall>},
    {32791, "Filter/Sharpen", "More", "sharpen-more", 0, {}, kNoValues, Filter<kSharpenMore>},
    {32790, "Filter/Sharpen", "Large", "sharpen-large", 0, {}, kNoValues, Filter<kSharpenLarge>},
    {32795, "Filter", "Average...", "average", 6005, {}, kNoValues, Filter<kAverage>},
    {32780, "Filter", "Despeckle", "despeckle", 0, {}, kNoValues, Filter<kDespeckle>},
    {32796, "Filter", "Diffuse", "diffuse", 0, {}, kNoValues, Filter<kDiffuse>},
    {32778, "Filter", "Emboss...", "emboss", 6002, kEmbossValues, kAnyLeading2, Emboss},
    {32781, "Filter", "Find Edge...", "find-edge", 6006, kFindEdgeValues, kAnyLeading3, FindEdge},
    {32779, "Filter", "Mosaic...", "mosaic", 6004, kMosaicValues, Counts({0, 1}), Mosaic},
    {32782, "Filter", "Trace Contour...", "trace-contour", 6007, kTraceContourValues, kAnyLeading4,
     TraceContour},
    {32809, "Filter/Cool Color", "Green", "cool-green", 0, {}, kNoValues, Filter<kCoolGreen>},
    {32810, "Filter/Cool Color", "Blue", "cool-blue", 0, {}, kNoValues, Filter<kCoolBlue>},
    {32811, "Filter/Cool Color", "Cyan", "cool-cyan", 0, {}, kNoValues, Filter<kCoolCyan>},
    {32812, "Filter/Warm Color", "Red", "warm-red", 0, {}, kNoValues, Filter<kWarmRed>},
    {32813, "Filter/Warm Color", "Magenta", "warm-magenta", 0, {}, kNoValues, Filter<kWarmMagenta>},
    {32814, "Filter/Warm Color", "Yellow", "warm-yellow", 0, {}, kNoValues, Filter<kWarmYellow>},
};

} // namespace

std::span<const OpsCommand> OpsCommands() {
    return kCommands;
}

const OpsCommand* FindOpsCommand(int id) {
    for (const OpsCommand& command : kCommands) {
        if (command.id == id) {
            return &command;
        }
    }
    return nullptr;
}

const OpsCommand* FindOpsCommandByName(std::string_view cliName) {
    for (const OpsCommand& command : kCommands) {
        if (cliName == command.cliName) {
            return &command;
        }
    }
    return nullptr;
}

int RunOpsCommand(CommandContext& ctx, const OpsCommand& command) {
    std::vector<int> values;
    for (const OpsParameter& parameter : command.parameters) {
        values.push_back(parameter.defaultValue);
    }
    return command.run(ctx, values, 0);
}
