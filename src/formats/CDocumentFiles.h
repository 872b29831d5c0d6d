#pragma once

#include "formats/LoadLimits.h"
#include "formats/PictureLoader.h"
#include "platform/MessagePresenter.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class CBriselDoc;
class CUndoHistory;

// The document's file commands: open, Save, Save As, Revert, the put-floating
// and save-changes questions, and their enabling rules. Works on one document
// and the undo history; shows every message through platform::ShowMessage.
//
// The window layer plugs in three things:
//  - the save dialog (SetSaveDialog): given the current path and the filter
//    list, it returns the chosen path, or nothing when the user cancelled;
//  - a view reset (SetViewReset): called when a new picture replaces the old
//    one, so the view goes back to its first scroll position and zoom;
//  - the JPEG quality (SetJpegQuality): what the main frame holds; by default
//    the "MainSection" / "JPGQuality" setting is read at each save.
// Without a save dialog, Save As does nothing and reports failure.
class CDocumentFiles {
public:
    using SaveDialog =
        std::function<std::optional<std::string>(const std::string& initialPath, const char* filters)>;

    static constexpr int kIdFileSave = 57603;
    static constexpr int kIdFileSaveAs = 57604;
    static constexpr int kIdFileRevert = 32836;
    // Filter list of the Save dialog.
    static constexpr const char* kSaveFilters = "*.bmp;*.jpg;*.jpeg;*.gif;*.png";
    // The name of a document that stands for no file.
    static constexpr const char* kUntitledName = "Untitled";

    CDocumentFiles(CBriselDoc& doc, CUndoHistory& undo, LoadLimitSize limits);

    void SetSaveDialog(SaveDialog dialog) { m_saveDialog = std::move(dialog); }
    void SetViewReset(std::function<void()> reset) { m_viewReset = std::move(reset); }
    void SetJpegQuality(std::function<int()> quality) { m_jpegQuality = std::move(quality); }
    const LoadLimitSize& Limits() const { return m_limits; }

    // Opens a picture file into the document. A missing or unreadable file is
    // reported and changes nothing. 1 on success, 0 on failure.
    int OnOpenDocument(const std::string& path);
    // Save (57603): to the document's own path when it has a usable one (not
    // reduced, not a GIF file), else as Save As. True when saved.
    bool Save();
    // Save As (57604): asks the save dialog, saves there and adopts the path.
    bool SaveAs();
    // Writes the picture to `path` after asking about a floating selection.
    // 1 when written, 0 otherwise (the memory message shown when that was
    // the cause).
    int OnSaveDocument(const std::string& path);
    // Asks whether to stamp a floating selection before saving, when one
    // exists and the document is modified. Yes stamps it (it stays floating).
    // Returns the answer, or Ok when there was nothing to ask.
    platform::MessageAnswer AskPutFloating();
    // Before closing, New or Open: offers to save a modified document, naming
    // its file. True when the pending command may go on (nothing to save, No,
    // or a successful save, through the save dialog too); false after Cancel
    // and after a save that failed or whose dialog was cancelled.
    bool SaveModified();
    // Revert (32836): after the user agrees to lose the changes, reloads the
    // picture from its file, dropping the selection and the undo history.
    // 1 on success; on No or failure the current picture stays.
    int Revert();

    // Enabling rules: Save needs a modified document, Save As an open one,
    // Revert a modified, not reduced document that has a path.
    bool CanSave() const;
    bool CanSaveAs() const { return IsOpen(); }
    bool CanRevert() const;
    // Tells the user once that the last opened file was loaded at a reduced
    // size; the view calls this when it is first shown. True when shown.
    bool ShowReducedNotice();

private:
    bool IsOpen() const;
    bool PathIsGif() const;
    bool HasUsablePath() const;
    std::string SaveChangesName() const;
    struct LoadedPicture {
        std::unique_ptr<CDibImage> picture;
        std::unique_ptr<CDibImage> mask;
        PictureFileInfo info;
    };
    int LoadWithMask(const std::string& path, LoadedPicture& loaded) const;
    // The loaded picture becomes the document's, with its reduced and
    // transparency marks.
    void Adopt(LoadedPicture& loaded);

    CBriselDoc& m_doc;
    CUndoHistory& m_undo;
    LoadLimitSize m_limits;
    SaveDialog m_saveDialog;
    std::function<void()> m_viewReset;
    std::function<int()> m_jpegQuality;
    bool m_reducedNoticePending = false;
};
