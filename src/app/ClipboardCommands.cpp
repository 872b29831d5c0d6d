#include "app/ClipboardCommands.h"

#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/ClipboardExchange.h"
#include "app/CommandIds.h"
#include "image/CBriselDoc.h"
#include "image/DibHelpers.h"
#include "ops/EditCommands.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"
#include "view/CBriselView.h"

void ClipboardCommands::Copy(CMainFrame& frame) {
    if (ClipboardExchange::Put(*frame.Document()) == 1) {
        frame.SetClipboardData(true);
    }
    frame.StateChanged();
}

void ClipboardCommands::Cut(CMainFrame& frame) {
    if (ClipboardExchange::Put(*frame.Document()) != 1) {
        frame.StateChanged();
        return;
    }
    frame.SetClipboardData(true);
    frame.OnEditCommand(cmd::kClear);
    frame.StateChanged();
}

void ClipboardCommands::Paste(CMainFrame& frame) {
    std::unique_ptr<CDibImage> image;
    std::unique_ptr<CDibImage> mask;
    if (!ClipboardExchange::Read(image, mask)) {
        return;
    }
    if (!mask) {
        mask = CreateMask(image->Width(), image->Height(), false);
        if (!mask) {
            platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
            return;
        }
    }
    const ViewState& state = frame.View()->State();
    const int x = state.firstVisibleX;
    const int y = state.firstVisibleY;
    frame.RunEditCommand([&](CommandContext& context, EditResult& result) {
        return EditPasteFloating(context, std::move(image), std::move(mask), x, y, result);
    });
}

void ClipboardCommands::PasteAsNew(CMainFrame& frame) {
    CBriselApp* app = frame.App();
    if (app != nullptr && !app->CanCloseDocument()) {
        return;
    }
    std::unique_ptr<CDibImage> image;
    std::unique_ptr<CDibImage> mask;
    if (!ClipboardExchange::Read(image, mask)) {
        return;
    }
    CBriselView* view = frame.View();
    CBriselDoc& doc = *frame.Document();
    CommandContext context = frame.EditingContext();
    EditResult result;
    {
        platform::WaitCursor wait;
        view->StopOutlineTimer();
        if (!EditPasteAsNew(context, std::move(image), std::move(mask), result)) {
            frame.StateChanged();
            return;
        }
    }
    // The pasted picture is a new picture of its own: saving asks for a name.
    doc.SetPathName("");
    doc.SetTitle("");
    doc.SetReduced(false);
    frame.InitialUpdate();
    frame.FitLargePicture();
    if (app != nullptr) {
        app->AfterDocumentCommand(true);
    }
    if (result.outline) {
        view->StartOutlineTimer();
    }
}

void ClipboardCommands::OfferOnExit(CMainFrame& frame) {
    if (!frame.HasClipboardData() || !ClipboardExchange::HoldsOurPicture()) {
        return;
    }
    const auto answer =
        platform::ShowMessage(platform::IDS_CLIPBOARD_KEEP_DATA, platform::MB_YESNO | platform::MB_ICONQUESTION);
    if (answer == platform::MessageAnswer::No) {
        ClipboardExchange::Clear();
        frame.SetClipboardData(false);
    }
}
