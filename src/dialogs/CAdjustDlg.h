#pragma once

#include "dialogs/CommandDialog.h"
#include "ops/AdjustPreview.h"

class NumberTriple;
class QComboBox;

// "Brightness/Contrast" (template 6008), "Hue/Saturation" (6009) and "Gamma"
// (6010): the values per channel slot, shown live in the document. Brightness,
// contrast and gamma recompute the preview on every change; hue/saturation
// waits for "Preview" (or OK). Every value starts from its default each time.
class CAdjustDlg : public CommandDialog {
    Q_OBJECT
public:
    CAdjustDlg(int kind, CommandContext& ctx, QWidget* parent = nullptr);

    // Starts the preview and computes it once; 0 when the result cannot be made.
    int Open();

    const AdjustSettings& Settings() const { return m_settings; }
    QComboBox* Channels() const { return m_channels; } // null for hue/saturation
    NumberTriple* First() const { return m_first; }
    NumberTriple* Second() const { return m_second; } // null for gamma

private:
    int Slot() const;
    void StoreFirst(int value);
    void StoreSecond(int value);
    void AfterStore();
    void ChooseChannel(int channel);
    void ApplyPreview();

    CommandContext& m_ctx;
    AdjustSettings m_settings;
    QComboBox* m_channels = nullptr;
    NumberTriple* m_first = nullptr;
    NumberTriple* m_second = nullptr;
    bool m_showingSlot = false;
};
