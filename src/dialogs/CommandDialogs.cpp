#include "dialogs/CommandDialogs.h"

#include "dialogs/CAdjustDlg.h"
#include "dialogs/CAverageDlg.h"
#include "dialogs/CEdgeDlg.h"
#include "dialogs/CEmbossDlg.h"
#include "dialogs/CMosaicDlg.h"
#include "dialogs/CRescaleDlg.h"
#include "dialogs/CRotateDlg.h"
#include "image/CBriselDoc.h"

namespace commanddialogs {

namespace {

// A dialog that only asks for values: on OK the command runs with them.
template <class Dialog> int AskThenRun(QWidget* parent, CommandContext& ctx, const OpsCommand& command) {
    Dialog dialog(parent);
    return CommandDialog::ExecAndRun(dialog, ctx, command);
}

template <bool IsContour> int RunEdge(QWidget* parent, CommandContext& ctx, const OpsCommand& command) {
    CEdgeDlg dialog(IsContour, parent);
    return CommandDialog::ExecAndRun(dialog, ctx, command);
}

int RunRescale(QWidget* parent, CommandContext& ctx, const OpsCommand& command) {
    if (ctx.doc.GetImage() == nullptr) {
        return 0;
    }
    CRescaleDlg dialog(ctx.doc, parent);
    return CommandDialog::ExecAndRun(dialog, ctx, command);
}

// An adjustment previews in the document while its dialog is open; OK keeps
// the previewed result, so the command is not run again afterwards.
template <int Kind> int RunAdjust(QWidget* parent, CommandContext& ctx, const OpsCommand&) {
    CAdjustDlg dialog(Kind, ctx, parent);
    if (!dialog.Open()) {
        return 0;
    }
    return dialog.exec() == QDialog::Accepted ? 1 : 0;
}

struct Entry {
    int dialogId;
    Runner run;
};

constexpr Entry kDialogs[] = {
    {6002, AskThenRun<CEmbossDlg>},
    {6003, RunRescale},
    {6004, AskThenRun<CMosaicDlg>},
    {6005, AskThenRun<CAverageDlg>},
    {6006, RunEdge<false>},
    {6007, RunEdge<true>},
    {6008, RunAdjust<kAdjustBrightnessContrast>},
    {6009, RunAdjust<kAdjustHueSaturation>},
    {6010, RunAdjust<kAdjustGamma>},
    {6011, AskThenRun<CRotateDlg>},
};
} // namespace

Runner Find(int dialogId) {
    for (const Entry& entry : kDialogs) {
        if (entry.dialogId == dialogId) {
            return entry.run;
        }
    }
    return nullptr;
}

} // namespace commanddialogs
