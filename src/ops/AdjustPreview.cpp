#include "ops/AdjustPreview.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/CUndoHistory.h"
#include "ops/CommandHandOver.h"
#include "platform/WaitCursor.h"

int AdjustDialogTemplate(int kind) {
    return 6007 + kind;
}

AdjustSettings AdjustSettings::Defaults(int kind) {
    AdjustSettings settings;
    settings.kind = kind;
    if (kind == kAdjustGamma) {
        for (int& gamma : settings.first) {
            gamma = 10;
        }
    }
    return settings;
}

AdjustPreview::~AdjustPreview() {
    if (IsOpen()) {
        Cancel();
    }
}

int AdjustPreview::Begin() {
    CDibImage* source = m_ctx.doc.GetImage();
    if (IsOpen() || source == nullptr || source->BitsPerPixel() != 24) {
        return 0;
    }
    auto result = ops::CreateResultImage(*source, source->Width(), source->Height());
    if (!result) {
        return 0;
    }
    m_result = result.get();
    m_source = m_ctx.doc.SetImage(std::move(result));
    m_adjuster.SetTarget(m_result);
    m_adjuster.SetSource(m_source.get());
    return 1;
}

void ApplyAdjustSettings(CColorAdjuster& adjuster, const AdjustSettings& s) {
    const int slot = s.channel == 0 ? 0 : 1;
    switch (s.kind) {
    case kAdjustBrightnessContrast:
        if (slot == 0) {
            adjuster.BuildBrightnessContrast(s.first[0], s.first[0], s.first[0], s.second[0], s.second[0],
                                             s.second[0]);
        } else {
            adjuster.BuildBrightnessContrast(s.first[3], s.first[2], s.first[1], s.second[3], s.second[2],
                                             s.second[1]);
        }
        adjuster.ApplyTables();
        break;
    case kAdjustHueSaturation:
        adjuster.ApplyHueSaturation(s.first[0], s.second[0]);
        break;
    case kAdjustGamma:
        adjuster.ResetTables();
        if (slot == 0) {
            adjuster.BuildGamma(s.first[0], s.first[0], s.first[0]);
        } else {
            adjuster.BuildGamma(s.first[1], s.first[2], s.first[3]);
        }
        adjuster.ApplyTables();
        break;
    default:
        break;
    }
}

void AdjustPreview::Apply(const AdjustSettings& s) {
    if (!IsOpen()) {
        return;
    }
    platform::WaitCursor wait;
    ApplyAdjustSettings(m_adjuster, s);
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}

void AdjustPreview::Confirm() {
    if (!IsOpen()) {
        return;
    }
    m_ctx.doc.SetModifiedFlag();
    m_ctx.undo.RecordObjects(m_ctx.doc, std::move(m_source), nullptr, 1, 0);
    m_result = nullptr;
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}

void AdjustPreview::Cancel() {
    if (!IsOpen()) {
        return;
    }
    m_ctx.doc.SetImage(std::move(m_source)); // the returned result is dropped
    m_result = nullptr;
    m_ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}

int RunAdjustCommand(CommandContext& ctx, const AdjustSettings& settings) {
    AdjustPreview preview(ctx);
    if (!preview.Begin()) {
        return 0;
    }
    preview.Apply(settings);
    preview.Confirm();
    return 1;
}
