#include "formats/CDocumentFiles.h"

#include "formats/FileResult.h"
#include "formats/ImageFileType.h"
#include "formats/InputFile.h"
#include "formats/JpegQuality.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "platform/StringTable.h"

#include <sys/stat.h>

using platform::MessageAnswer;

namespace {
std::string FileNameOf(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool Exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

void ShowLoadFailure(int result) {
    platform::ShowMessage(result == kFileOutOfMemory ? platform::IDS_MEMORY_NOT_ENOUGH
                                                     : platform::IDS_UNABLE_TO_OPEN,
                          platform::MB_ICONEXCLAMATION);
}
} // namespace

CDocumentFiles::CDocumentFiles(CBriselDoc& doc, CUndoHistory& undo, LoadLimitSize limits)
    : m_doc(doc), m_undo(undo), m_limits(limits), m_jpegQuality(JpegQuality::Read) {}

bool CDocumentFiles::IsOpen() const {
    return m_doc.GetPicture() != nullptr;
}

bool CDocumentFiles::PathIsGif() const {
    return !m_doc.PathName().empty() && GetImageFileType(m_doc.PathName()) == kFileTypeGif;
}

bool CDocumentFiles::HasUsablePath() const {
    return m_doc.PathName().size() >= 4 && !m_doc.IsReduced() && !PathIsGif();
}

bool CDocumentFiles::CanSave() const {
    return IsOpen() && m_doc.IsModified();
}

bool CDocumentFiles::CanRevert() const {
    return IsOpen() && !m_doc.PathName().empty() && m_doc.IsModified() && !m_doc.IsReduced();
}

int CDocumentFiles::OnOpenDocument(const std::string& path) {
    if (!Exists(path)) {
        const std::string text =
            std::string(platform::LoadString(platform::IDS_UNABLE_TO_OPEN)) + " - " + path;
        platform::ShowMessageText(text, platform::MB_ICONSTOP);
        return 0;
    }
    // The file is read before anything of the document goes: a file that
    // cannot be read leaves picture, name, modified flag and undo as they were.
    LoadedPicture loaded;
    const int result = LoadWithMask(path, loaded);
    if (result != kFileOk) {
        ShowLoadFailure(result);
        return 0;
    }
    m_doc.SetModifiedFlag(false);
    m_doc.DeleteContents();
    m_undo.Empty();
    Adopt(loaded);
    m_doc.SetPathName(path);
    m_doc.SetTitle(FileNameOf(path));
    m_reducedNoticePending = m_doc.IsReduced();
    m_doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return 1;
}

int CDocumentFiles::LoadWithMask(const std::string& path, LoadedPicture& loaded) const {
    int result = LoadPicture(path, m_limits, loaded.picture, &loaded.info);
    if (result == kFileOk) {
        loaded.mask = CreateMask(loaded.picture->Width(), loaded.picture->Height(), true);
        result = loaded.mask ? kFileOk : kFileOutOfMemory;
    }
    return result;
}

void CDocumentFiles::Adopt(LoadedPicture& loaded) {
    const bool reduced = loaded.picture->Width() != loaded.info.fileWidth ||
                         loaded.picture->Height() != loaded.info.fileHeight;
    m_doc.SetPicture(std::move(loaded.picture));
    m_doc.SetMask(std::move(loaded.mask));
    m_doc.SetReduced(reduced);
    m_doc.SetFileHasTransparency(loaded.info.transparent);
}

bool CDocumentFiles::ShowReducedNotice() {
    if (!m_reducedNoticePending) {
        return false;
    }
    m_reducedNoticePending = false;
    platform::ShowMessage(platform::IDS_IMAGE_TOO_LARGE, platform::MB_ICONEXCLAMATION);
    return true;
}

bool CDocumentFiles::Save() {
    if (!HasUsablePath()) {
        return SaveAs();
    }
    if (m_doc.FileHasTransparency()) {
        // Saving over the file would fill its transparent areas with white.
        switch (platform::ShowMessage(platform::IDS_SAVE_WITHOUT_TRANSPARENCY,
                                      platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION)) {
        case MessageAnswer::Yes:
            break;
        case MessageAnswer::No:
            return SaveAs();
        default:
            return false;
        }
    }
    if (!OnSaveDocument(m_doc.PathName())) {
        return false;
    }
    m_doc.SetFileHasTransparency(false);
    m_doc.SetModifiedFlag(false);
    return true;
}

bool CDocumentFiles::SaveAs() {
    if (!m_saveDialog) {
        return false;
    }
    const std::optional<std::string> chosen = m_saveDialog(m_doc.PathName(), kSaveFilters);
    if (!chosen || chosen->empty() || !OnSaveDocument(*chosen)) {
        return false;
    }
    m_doc.SetPathName(*chosen);
    m_doc.SetTitle(FileNameOf(*chosen));
    m_doc.SetModifiedFlag(false);
    m_doc.SetReduced(false);
    m_doc.SetFileHasTransparency(false);
    m_reducedNoticePending = false;
    return true;
}

MessageAnswer CDocumentFiles::AskPutFloating() {
    if (m_doc.GetFloatMask() == nullptr || !m_doc.IsModified()) {
        return MessageAnswer::Ok;
    }
    const MessageAnswer answer = platform::ShowMessage(platform::IDS_PUT_FLOATING_BEFORE_SAVE,
                                                       platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION);
    if (answer == MessageAnswer::Yes) {
        m_doc.PutFloating(true);
        m_doc.UpdateAllViews();
        m_doc.SetModifiedFlag(true);
    }
    return answer;
}

int CDocumentFiles::OnSaveDocument(const std::string& path) {
    if (!IsOpen()) {
        return 0;
    }
    // A name of a type we cannot write is refused before anything is asked.
    if (!IsSaveableName(path)) {
        platform::ShowMessageText(UnknownSaveTypeMessage(), platform::MB_ICONEXCLAMATION);
        return 0;
    }
    if (AskPutFloating() == MessageAnswer::Cancel) {
        return 0;
    }
    const int result =
        SavePicture(path, *m_doc.GetPicture(), m_jpegQuality ? m_jpegQuality() : JpegQuality::kDefault);
    if (result == kFileOutOfMemory) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
    } else if (result != kFileOk) {
        platform::ShowMessageText(SaveFailureMessage(), platform::MB_ICONEXCLAMATION);
    }
    return result == kFileOk ? 1 : 0;
}

// The file's full path (a GIF file's too, though Save cannot write over it),
// else the title, else the untitled name.
std::string CDocumentFiles::SaveChangesName() const {
    if (!m_doc.PathName().empty() && !m_doc.IsReduced()) {
        return m_doc.PathName();
    }
    if (m_doc.IsReduced() || m_doc.Title().empty()) {
        return kUntitledName;
    }
    return m_doc.Title();
}

bool CDocumentFiles::SaveModified() {
    if (!m_doc.IsModified()) {
        return true;
    }
    const std::string question =
        std::string(platform::LoadString(platform::IDS_SAVE_CHANGES_TO)) + SaveChangesName() + "?";
    const MessageAnswer answer =
        platform::ShowMessageText(question, platform::MB_YESNOCANCEL | platform::MB_ICONEXCLAMATION);
    if (answer == MessageAnswer::Cancel) {
        return false;
    }
    if (answer != MessageAnswer::Yes) {
        return true;
    }
    // Without a usable path Save goes through the dialog; either way the
    // pending command goes on once the picture is saved.
    return Save();
}

int CDocumentFiles::Revert() {
    if (!CanRevert()) {
        return 0;
    }
    if (platform::ShowMessage(platform::IDS_REVERT_DISCARDS_CHANGES,
                              platform::MB_YESNO | platform::MB_ICONQUESTION) != MessageAnswer::Yes) {
        return 0;
    }
    LoadedPicture loaded;
    const int result = LoadWithMask(m_doc.PathName(), loaded);
    if (result != kFileOk) {
        ShowLoadFailure(result);
        return 0;
    }
    m_doc.DiscardFloating();
    Adopt(loaded);
    m_doc.SetFloatPosition(0, 0);
    m_undo.Empty();
    if (m_viewReset) {
        m_viewReset();
    }
    m_doc.SetModifiedFlag(false);
    m_doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return 1;
}
