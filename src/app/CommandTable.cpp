#include "app/CommandTable.h"

#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/ClipboardCommands.h"
#include "app/ClipboardExchange.h"
#include "app/CommandIds.h"
#include "dialogs/CommandDialogs.h"
#include "formats/CDocumentFiles.h"
#include "image/CBriselDoc.h"
#include "ops/EditCommandTable.h"
#include "ops/OpsCommandTable.h"
#include "view/CBriselView.h"
#include "tools/ToolTable.h"
#include "view/ZoomRules.h"

#include <algorithm>
#include <deque>
#include <string>

namespace {
using T = CommandTargets;
constexpr auto F = CommandTarget::Frame;
constexpr auto V = CommandTarget::View;
constexpr auto D = CommandTarget::Document;
constexpr auto A = CommandTarget::Application;

bool HasDocument(const T& t) {
    return t.doc != nullptr && t.doc->GetPicture() != nullptr;
}
bool HasSelection(const T& t) {
    return HasDocument(t) && t.doc->GetFloatMask() != nullptr;
}
bool ClipboardHasPicture(const T& t) {
    return HasDocument(t) && ClipboardExchange::HasPicture();
}

int ImageWidth(const T& t) {
    return HasDocument(t) ? t.doc->GetPicture()->Width() : 0;
}
int ImageHeight(const T& t) {
    return HasDocument(t) ? t.doc->GetPicture()->Height() : 0;
}

template <int N> void Magnify(T& t) {
    t.view->ZoomMagnify(N);
}
template <int N> void Reduce(T& t) {
    t.view->ZoomReduce(N);
}
template <int N> bool CanMagnify(const T& t) {
    return HasDocument(t) && zoom::CanMagnifyTo(N, ImageWidth(t), ImageHeight(t));
}
template <int N> bool CanReduce(const T& t) {
    return HasDocument(t) && zoom::CanReduceTo(N, ImageWidth(t), ImageHeight(t));
}
template <int Index> void OpenRecent(T& t) {
    t.app->OnOpenRecent(Index);
}
template <int Index> bool HasRecent(const T& t) {
    return t.app->HasRecentFile(Index);
}

bool CanRunImageCommand(const T& t) {
    const OpsCommand* op = FindOpsCommand(t.id);
    return HasDocument(t) && op != nullptr &&
           (op->dialog == 0 || commanddialogs::Find(op->dialog) != nullptr);
}

bool StartsGroup(int id) {
    constexpr int kFirstOfGroup[] = {32800, 32783, 32795, 32809};
    return std::find(std::begin(kFirstOfGroup), std::end(kFirstOfGroup), id) != std::end(kFirstOfGroup);
}

// The Image and Filter menus are the image-operation table ("Image/Color
// Level" names a submenu).
void AppendImageCommands(std::vector<CommandEntry>& table) {
    static std::deque<std::string> names; // stable storage for the menu names
    for (const OpsCommand& op : OpsCommands()) {
        const std::string path(op.menu);
        const std::size_t slash = path.find('/');
        names.push_back(path.substr(0, slash));
        const char* menu = names.back().c_str();
        const char* submenu = nullptr;
        if (slash != std::string::npos) {
            names.push_back(path.substr(slash + 1));
            submenu = names.back().c_str();
        }
        table.push_back({op.id, menu, submenu, op.label, nullptr, F,
                         [](T& t) { t.frame.OnImageCommand(t.id); }, CanRunImageCommand, nullptr,
                         StartsGroup(op.id)});
    }
}

// The Edit commands of the edit-command table run through the frame, which
// follows up on the view.
void ConnectEditCommands(std::vector<CommandEntry>& table) {
    for (CommandEntry& entry : table) {
        const EditCommand* edit = FindEditCommand(entry.id);
        if (edit == nullptr) {
            continue;
        }
        entry.run = [](T& t) { t.frame.OnEditCommand(t.id); };
        entry.enabled = [](const T& t) { return IsEditCommandEnabled(*FindEditCommand(t.id), t.doc); };
    }
}

// Edit entries without a handler stay disabled until the operation behind
// them is available.
std::vector<CommandEntry> BuildTable() {
    std::vector<CommandEntry> table = {
        // File
        {cmd::kNew, "File", nullptr, "New...", QKeySequence::New, A, [](T& t) { t.app->OnFileNew(); }, nullptr,
         nullptr, false},
        {cmd::kOpen, "File", nullptr, "Open...", QKeySequence::Open, A, [](T& t) { t.app->OnFileOpen(); }, nullptr,
         nullptr, false},
        {cmd::kRecentFirst + 0, "File", "Open Recent", "1", nullptr, A, OpenRecent<0>, HasRecent<0>, nullptr,
         false},
        {cmd::kRecentFirst + 1, "File", "Open Recent", "2", nullptr, A, OpenRecent<1>, HasRecent<1>, nullptr,
         false},
        {cmd::kRecentFirst + 2, "File", "Open Recent", "3", nullptr, A, OpenRecent<2>, HasRecent<2>, nullptr,
         false},
        {cmd::kRecentFirst + 3, "File", "Open Recent", "4", nullptr, A, OpenRecent<3>, HasRecent<3>, nullptr,
         false},
        {cmd::kRecentFirst + 4, "File", "Open Recent", "5", nullptr, A, OpenRecent<4>, HasRecent<4>, nullptr,
         false},
        {cmd::kRecentFirst + 5, "File", "Open Recent", "6", nullptr, A, OpenRecent<5>, HasRecent<5>, nullptr,
         false},
        {cmd::kRecentFirst + 6, "File", "Open Recent", "7", nullptr, A, OpenRecent<6>, HasRecent<6>, nullptr,
         false},
        {cmd::kRecentFirst + 7, "File", "Open Recent", "8", nullptr, A, OpenRecent<7>, HasRecent<7>, nullptr,
         false},
        {cmd::kSave, "File", nullptr, "Save", QKeySequence::Save, D,
         [](T& t) { t.app->AfterDocumentCommand(t.files->Save()); },
         [](const T& t) { return t.files->CanSave(); }, nullptr, true},
        {cmd::kSaveAs, "File", nullptr, "Save As...", QKeySequence::SaveAs, D,
         [](T& t) { t.app->AfterDocumentCommand(t.files->SaveAs()); }, HasDocument, nullptr, false},
        {cmd::kRevert, "File", nullptr, "Revert", nullptr, D,
         [](T& t) { t.app->AfterDocumentCommand(t.files->Revert() == 1); },
         [](const T& t) { return t.files->CanRevert(); }, nullptr, false},
        {cmd::kSendMail, "File", nullptr, "Send via E-mail...", nullptr, A,
         [](T& t) { t.app->OnSend(ExternalSender::Channel::Mail); }, HasDocument, nullptr, true},
        {cmd::kSendInfrared, "File", nullptr, "Send via Infrared...", nullptr, A,
         [](T& t) { t.app->OnSend(ExternalSender::Channel::Device); }, HasDocument, nullptr, false},
        {cmd::kOptions, "File", nullptr, "Options...", nullptr, F, [](T& t) { t.frame.OnOptions(); }, nullptr,
         nullptr, true},
        {cmd::kExit, "File", nullptr, "Exit", {QKeySequence::Quit, "Ctrl+Q"}, A, [](T& t) { t.app->OnExit(); },
         nullptr, nullptr, true},
        // Edit
        {cmd::kUndo, "Edit", nullptr, "Undo", {QKeySequence::Undo, "Ctrl+Z"}, F, [](T& t) { t.frame.OnUndo(); },
         [](const T& t) { return t.frame.UndoHistory().CanUndo(t.doc); }, nullptr, false},
        {cmd::kRedo, "Edit", nullptr, "Redo", {QKeySequence::Redo, "Ctrl+Y; Ctrl+Shift+Z"}, F,
         [](T& t) { t.frame.OnRedo(); }, [](const T& t) { return t.frame.UndoHistory().CanRedo(t.doc); },
         nullptr, false},
        {cmd::kCut, "Edit", nullptr, "Cut", QKeySequence::Cut, F, [](T& t) { ClipboardCommands::Cut(t.frame); },
         HasSelection, nullptr, true},
        {cmd::kCopy, "Edit", nullptr, "Copy", QKeySequence::Copy, F, [](T& t) { ClipboardCommands::Copy(t.frame); },
         HasDocument, nullptr, false},
        {cmd::kPaste, "Edit", nullptr, "Paste", QKeySequence::Paste, F, [](T& t) { ClipboardCommands::Paste(t.frame); },
         ClipboardHasPicture, nullptr, false},
        {cmd::kPasteAsNew, "Edit", nullptr, "Paste as New", nullptr, F,
         [](T& t) { ClipboardCommands::PasteAsNew(t.frame); }, ClipboardHasPicture, nullptr, false},
        {cmd::kClear, "Edit", nullptr, "Clear", QKeySequence::Delete, F, nullptr, HasSelection, nullptr, false},
        {cmd::kCrop, "Edit", nullptr, "Crop", nullptr, F, nullptr, HasSelection, nullptr, false},
        {cmd::kFill, "Edit", nullptr, "&Fill...", nullptr, F, nullptr, HasDocument, nullptr, false},
        {cmd::kSelectAll, "Edit", nullptr, "Select All", QKeySequence::SelectAll, F, nullptr, HasDocument, nullptr, true},
        {cmd::kSelectNone, "Edit", nullptr, "Select None", {QKeySequence::Deselect, "Ctrl+Shift+A"}, F, nullptr, HasSelection, nullptr, false},
        {cmd::kInvertSelection, "Edit", nullptr, "Invert Selection", nullptr, F, nullptr, HasSelection,
         nullptr, false},
        {cmd::kPutFloating, "Edit", nullptr, "Put Floating", nullptr, F, nullptr, HasSelection, nullptr,
         true},
        {cmd::kDiscardFloating, "Edit", nullptr, "Discard Floating", nullptr, F, nullptr, HasSelection,
         nullptr, false},
        // View
        {cmd::kActualImage, "View", nullptr, "Actual Image", "Ctrl+0", V, [](T& t) { t.view->ZoomActual(); },
         nullptr, nullptr, false},
        {cmd::kFitInWindow, "View", nullptr, "Fit in Window", "Ctrl+B", V, [](T& t) { t.view->ZoomToFit(); },
         HasDocument, nullptr, false},
        {cmd::kMagnifyIds[0], "View", "Magnify", "x 2", nullptr, V, Magnify<2>, CanMagnify<2>, nullptr,
         false},
        {cmd::kMagnifyIds[1], "View", "Magnify", "x 3", nullptr, V, Magnify<3>, CanMagnify<3>, nullptr,
         false},
        {cmd::kMagnifyIds[2], "View", "Magnify", "x 4", nullptr, V, Magnify<4>, CanMagnify<4>, nullptr,
         false},
        {cmd::kMagnifyIds[3], "View", "Magnify", "x 5", nullptr, V, Magnify<5>, CanMagnify<5>, nullptr,
         false},
        {cmd::kMagnifyIds[4], "View", "Magnify", "x 6", nullptr, V, Magnify<6>, CanMagnify<6>, nullptr,
         false},
        {cmd::kMagnifyIds[5], "View", "Magnify", "x 7", nullptr, V, Magnify<7>, CanMagnify<7>, nullptr,
         false},
        {cmd::kMagnifyIds[6], "View", "Magnify", "x 8", nullptr, V, Magnify<8>, CanMagnify<8>, nullptr,
         false},
        {cmd::kMagnifyIds[7], "View", "Magnify", "x 16", nullptr, V, Magnify<16>, CanMagnify<16>, nullptr,
         false},
        {cmd::kMagnifyIds[8], "View", "Magnify", "x 32", nullptr, V, Magnify<32>, CanMagnify<32>, nullptr,
         false},
        {cmd::kReduceIds[0], "View", "Reduce", "/ 2", nullptr, V, Reduce<2>, CanReduce<2>, nullptr, false},
        {cmd::kReduceIds[1], "View", "Reduce", "/ 3", nullptr, V, Reduce<3>, CanReduce<3>, nullptr, false},
        {cmd::kReduceIds[2], "View", "Reduce", "/ 4", nullptr, V, Reduce<4>, CanReduce<4>, nullptr, false},
        {cmd::kReduceIds[3], "View", "Reduce", "/ 5", nullptr, V, Reduce<5>, CanReduce<5>, nullptr, false},
        {cmd::kReduceIds[4], "View", "Reduce", "/ 6", nullptr, V, Reduce<6>, CanReduce<6>, nullptr, false},
        {cmd::kReduceIds[5], "View", "Reduce", "/ 7", nullptr, V, Reduce<7>, CanReduce<7>, nullptr, false},
        {cmd::kReduceIds[6], "View", "Reduce", "/ 8", nullptr, V, Reduce<8>, CanReduce<8>, nullptr, false},
        {cmd::kFullScreen, "View", nullptr, "Full Screen", "F11", V, [](T& t) { t.view->FullScreen(); },
         nullptr, nullptr, false},
        {cmd::kPixelGrid, "View", nullptr, "Pixel Grid", nullptr, F, [](T& t) { t.frame.OnPixelGrid(); },
         nullptr, [](const T& t) { return t.frame.PixelGridShown(); }, false},
        {cmd::kZoomIn, nullptr, nullptr, "Zoom In", {QKeySequence::ZoomIn, "Ctrl++; Ctrl+=; Ctrl+Num++"}, V, [](T& t) { t.view->ZoomInStep(true); },
         HasDocument, nullptr, false},
        {cmd::kZoomOut, nullptr, nullptr, "Zoom Out", {QKeySequence::ZoomOut, "Ctrl+-; Ctrl+Num+-"}, V, [](T& t) { t.view->ZoomOutStep(true); },
         HasDocument, nullptr, false},
        {cmd::kImageInformation, "View", nullptr, "Image Information...", nullptr, F,
         [](T& t) { t.frame.OnImageInformation(); }, HasDocument, nullptr, true},
        {cmd::kSystemInformation, "View", nullptr, "System Information...", nullptr, F,
         [](T& t) { t.frame.OnSystemInformation(); }, nullptr, nullptr, false},
        {cmd::kToolBar, "View", nullptr, "Tool Bar", nullptr, F, [](T& t) { t.frame.OnToolBar(); }, nullptr,
         [](const T& t) { return t.frame.ToolBarVisible(); }, true},
    };
    ConnectEditCommands(table);
    AppendImageCommands(table);
    // Help comes last in the menu bar.
    table.push_back({cmd::kHelp, "Help", nullptr, "Help", QKeySequence::HelpContents, A,
                     [](T& t) { t.app->OnHelp(); }, nullptr, nullptr, false});
    table.push_back({cmd::kAbout, "Help", nullptr, "About...", nullptr, A, [](T& t) { t.app->OnAbout(); },
                     nullptr, nullptr, true});
    // The tool commands come from the tool table.
    for (const tools::ToolInfo& tool : tools::Table()) {
        table.push_back({tool.id, nullptr, nullptr, "", nullptr, F, [](T& t) { t.frame.OnToolCommand(t.id); },
                         nullptr, nullptr, false});
    }
    return table;
}
} // namespace

const std::vector<CommandEntry>& CommandTable() {
    static const std::vector<CommandEntry> table = BuildTable();
    return table;
}

const CommandEntry* FindCommand(int id) {
    for (const CommandEntry& entry : CommandTable()) {
        if (entry.id == id) {
            return &entry;
        }
    }
    return nullptr;
}
