#pragma once

#include "image/CommandContext.h"
#include "ops/CColorAdjuster.h"

#include <memory>

class CDibImage;

// Kinds of colour adjustment and their dialog templates.
enum AdjustKind : int { kAdjustBrightnessContrast = 1, kAdjustHueSaturation = 2, kAdjustGamma = 3 };
int AdjustDialogTemplate(int kind); // 6008, 6009, 6010

// The values an adjustment dialog holds. Slot 0 is "All Channels", slots 1..3
// red, green and blue; `channel` chooses the slot set that is applied.
// Brightness/contrast: first = brightness, second = contrast (-100..100 each).
// Hue/saturation: slot 0 only, first = hue (-180..180), second = saturation
// (-100..100). Gamma: first = gamma (1..79, 10 = unchanged).
struct AdjustSettings {
    int kind = kAdjustBrightnessContrast;
    int channel = 0;
    int first[4] = {0, 0, 0, 0};
    int second[4] = {0, 0, 0, 0};

    static AdjustSettings Defaults(int kind);
};

// Computes the adjustment for these values from the adjuster's source into its
// target. Touches nothing else, so it may run on a copy away from the window.
void ApplyAdjustSettings(CColorAdjuster& adjuster, const AdjustSettings& settings);

// The live preview of an adjustment: while it is open the document shows a
// result computed from the untouched source, as often as the values change;
// Confirm keeps the result with one undo step, Cancel puts the source back
// exactly and records nothing. Destroying an unfinished preview cancels it.
class AdjustPreview {
public:
    explicit AdjustPreview(CommandContext& ctx) : m_ctx(ctx) {}
    ~AdjustPreview();
    AdjustPreview(const AdjustPreview&) = delete;
    AdjustPreview& operator=(const AdjustPreview&) = delete;

    // Creates the result and shows it in place of the source; 0 (after string
    // 65) when it cannot be created.
    int Begin();
    // Recomputes the result from the source for these values.
    void Apply(const AdjustSettings& settings);
    void Confirm();
    void Cancel();
    bool IsOpen() const { return m_source != nullptr; }

private:
    CommandContext& m_ctx;
    std::unique_ptr<CDibImage> m_source; // held here while the result is shown
    CDibImage* m_result = nullptr;       // owned by the document
    CColorAdjuster m_adjuster;
};

// The headless adjustment: open the preview, apply the values once, confirm.
int RunAdjustCommand(CommandContext& ctx, const AdjustSettings& settings);
