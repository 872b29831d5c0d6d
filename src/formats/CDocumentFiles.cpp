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
#include "platform/ScreenMetrics.h"
#include "platform/StringTable.h"

#include <sys/stat.h>

using platform::MessageAnswer;

namespace {
constexpr ColorWord kWhite = 0x00FFFFFF;

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
    m_doc.SetReduced(false);
    m_doc.SetModifiedFlag(false);
    m_doc.DeleteContents();
    m_undo.Empty();
    m_reducedNoticePending = false;

    std::unique_ptr<CDibImage> picture;
    PictureFileInfo info;
    int result = LoadPicture(path, m_limits, picture, &info);
    std::unique_ptr<CDibImage> mask;
    if (result == kFileOk) {
        mask = CreateMask(picture->Width(), picture->Height(), true);
        result = mask ? kFileOk : kFileOutOfMemory;
    }
    if (result != kFileOk) {
        OpenFailed(path, result);
        return 0;
    }
    const bool reduced = picture->Width() != info.fileWidth || picture->Height() != info.fileHeight;
    m_doc.SetPicture(std::move(picture));
    m_doc.SetMask(std::move(mask));
    m_doc.SetPathName(path);
    m_doc.SetTitle(FileNameOf(path));
    m_doc.SetReduced(reduced);
    m_reducedNoticePending = reduced;
    m_doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return 1;
}

void CDocumentFiles::OpenFailed(const std::string& path, int result) {
    BitmapInfoHeader header;
    InitDibHeader(header, platform::ScreenMetrics::Width(), platform::ScreenMetrics::Height(), 24, 72, 72);
    m_doc.NewImage(header, kFillFormatTrueColor, kWhite);
    if (m_viewReset) {
        m_viewReset();
    }
    ShowLoadFailure(result);
    m_doc.SetReduced(true);
    m_doc.SetPathName({});
    m_doc.SetTitle(FileNameOf(path));
    m_doc.SetModifiedFlag(false);
    m_doc.UpdateAllViews(CBriselDoc::kHintImageSize);
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
    if (!OnSaveDocument(m_doc.PathName())) {
        return false;
    }
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
    std::unique_ptr<CDibImage> picture;
    PictureFileInfo info;
    int result = LoadPicture(m_doc.PathName(), m_limits, picture, &info);
    std::unique_ptr<CDibImage> mask;
    if (result == kFileOk) {
        mask = CreateMask(picture->Width(), picture->Height(), true);
        result = mask ? kFileOk : kFileOutOfMemory;
    }
    if (result != kFileOk) {
        ShowLoadFailure(result);
        return 0;
    }
    const bool reduced = picture->Width() != info.fileWidth || picture->Height() != info.fileHeight;
    m_doc.DiscardFloating();
    m_doc.SetPicture(std::move(picture));
    m_doc.SetMask(std::move(mask));
    m_doc.SetFloatPosition(0, 0);
    m_doc.SetReduced(reduced);
    m_undo.Empty();
    if (m_viewReset) {
        m_viewReset();
    }
    m_doc.SetModifiedFlag(false);
    m_doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return 1;
}
