#include "image/CUndoRecord.h"

#include "image/CBriselDoc.h"
#include "image/DibHelpers.h"
#include "image/RegionPixels.h"
#include "image/TilePixels.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <utility>

void CUndoRecord::DestroySaved() {
    m_pImage.reset();
    m_pMask.reset();
    m_pFloatImage.reset();
    m_pPixels.reset();
    m_bOwnCopy = false;
}

void CUndoRecord::Empty() {
    DestroySaved();
    m_nKind = 0;
    m_nState = kNothing;
    m_bWithPos = false;
}

int CUndoRecord::Record(CBriselDoc& doc, int kind) {
    m_pDoc = &doc;
    m_bWithPos = false;
    bool ok = true;
    switch (kind) {
    case 0:
        DestroySaved();
        break;
    case 1:
        // Freed first, so that the new copy can reuse its memory.
        DestroySaved();
        m_pImage = DuplicateImage(doc.GetImage());
        ok = m_pImage != nullptr;
        m_bOwnCopy = ok;
        break;
    case 2:
        break;
    case 3:
        DestroySaved();
        m_xFloat = doc.FloatX();
        m_yFloat = doc.FloatY();
        break;
    case 4: {
        DestroySaved();
        const ImageRect rect = doc.GetFloatRect();
        m_pImage = doc.GetFloatMask()
                       ? doc.CopyPictureRect(rect.left, rect.top, rect.right - 1, rect.bottom - 1)
                       : nullptr;
        m_xFloat = doc.FloatX();
        m_yFloat = doc.FloatY();
        ok = m_pImage != nullptr;
        break;
    }
    case 5:
    case 7:
        ok = RecordSelectionState(doc) != 0;
        break;
    case 6:
        DestroySaved();
        m_pFloatImage = doc.SetFloatImage(nullptr);
        m_pMask = doc.SetFloatMask(nullptr);
        m_xFloat = doc.FloatX();
        m_yFloat = doc.FloatY();
        break;
    case 8:
        DestroySaved();
        m_pImage = DuplicateImage(doc.GetPicture());
        m_xFloat = doc.FloatX();
        m_yFloat = doc.FloatY();
        ok = m_pImage != nullptr;
        m_bOwnCopy = ok;
        break;
    case 9:
        DestroySaved();
        m_pImage = doc.SetPicture(nullptr);
        m_pMask = doc.SetFloatMask(nullptr);
        m_xFloat = doc.FloatX();
        m_yFloat = doc.FloatY();
        break;
    default:
        break;
    }
    if (!ok) {
        Empty();
        return 0;
    }
    m_nKind = static_cast<std::int16_t>(kind);
    m_nState = kind == 0 ? kNothing : kCanUndo;
    return 1;
}

int CUndoRecord::RecordSelectionState(CBriselDoc& doc) {
    DestroySaved();
    m_pImage = DuplicateImage(doc.GetPicture());
    if (!m_pImage) {
        return 0;
    }
    m_bOwnCopy = true;
    if (!doc.GetFloatImage()) {
        m_xFloat = 0;
        m_yFloat = 0;
        return 1;
    }
    m_pFloatImage = DuplicateImage(doc.GetFloatImage());
    m_pMask = DuplicateImage(doc.GetFloatMask());
    if (!m_pFloatImage || (doc.GetFloatMask() && !m_pMask)) {
        DestroySaved();
        return 0;
    }
    m_xFloat = doc.FloatX();
    m_yFloat = doc.FloatY();
    return 1;
}

void CUndoRecord::RecordObjects(CBriselDoc& doc, ImagePtr image, ImagePtr mask, int kind,
                                std::uint16_t value) {
    m_pDoc = &doc;
    m_pPixels.reset();
    m_bOwnCopy = false;
    m_pImage = std::move(image);
    m_pMask = std::move(mask);
    m_nKind = static_cast<std::int16_t>(kind);
    m_nValue = value;
    if (!m_pImage && kind != 2) {
        m_nKind = 0;
        m_nState = kNothing;
    } else {
        m_nState = kCanUndo;
    }
    m_bWithPos = false;
}

void CUndoRecord::AdoptFloatImage(ImagePtr floatImage) {
    m_pFloatImage = std::move(floatImage);
}

void CUndoRecord::SetPosition(int x, int y) {
    m_xFloat = x;
    m_yFloat = y;
    m_bWithPos = true;
}

int CUndoRecord::RecordWithWarning(CBriselDoc& doc, int kind) {
    if (Record(doc, kind)) {
        return 1;
    }
    platform::ShowMessage(platform::IDS_UNDO_OUT_OF_MEMORY, platform::MB_ICONSTOP);
    return 0;
}

bool CUndoRecord::Undo(CBriselDoc& doc) { return SwapWhen(CanUndo(&doc), doc); }

bool CUndoRecord::Redo(CBriselDoc& doc) { return SwapWhen(CanRedo(&doc), doc); }

bool CUndoRecord::SwapWhen(bool enabled, CBriselDoc& doc) {
    if (!enabled) {
        return false;
    }
    Swap(doc);
    doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return true;
}

bool CUndoRecord::CanUndo(const CBriselDoc* activeDoc) const {
    return activeDoc != nullptr && m_nKind != 0 && m_pDoc == activeDoc && m_nState == kCanUndo;
}

bool CUndoRecord::CanRedo(const CBriselDoc* activeDoc) const {
    return activeDoc != nullptr && m_nKind != 0 && m_pDoc == activeDoc && m_nState == kCanRedo;
}

void CUndoRecord::Swap(CBriselDoc& doc) {
    if (m_nState == kCanUndo) {
        m_nState = kCanRedo;
    } else if (m_nState == kCanRedo) {
        m_nState = kCanUndo;
    }
    switch (m_nKind) {
    case 1:
        if (m_pPixels) {
            m_pPixels->SwapWith(*doc.GetImage());
        } else {
            m_pImage = doc.SetImage(std::move(m_pImage));
        }
        break;
    case 2:
        m_nValue = static_cast<std::uint16_t>(doc.SetResolution(m_nValue));
        break;
    case 3:
        SwapPosition(doc);
        break;
    case 4:
        UndoPutFloating(doc);
        break;
    case 5:
    case 7:
        SwapSelectionState(doc);
        break;
    case 6:
        m_pFloatImage = doc.SetFloatImage(std::move(m_pFloatImage));
        m_pMask = doc.SetFloatMask(std::move(m_pMask));
        SwapPosition(doc);
        break;
    case 8:
        SwapPicture(doc);
        m_pFloatImage = doc.SetFloatImage(std::move(m_pFloatImage));
        SwapPosition(doc);
        break;
    case 9:
        UndoCrop(doc);
        break;
    case 10:
        SwapImageAndMask(doc);
        break;
    default:
        break;
    }
}

void CUndoRecord::SwapPosition(CBriselDoc& doc) {
    const int x = doc.FloatX();
    const int y = doc.FloatY();
    doc.SetFloatPosition(m_xFloat, m_yFloat);
    m_xFloat = x;
    m_yFloat = y;
}

void CUndoRecord::SwapPicture(CBriselDoc& doc) {
    if (m_pPixels) {
        m_pPixels->SwapWith(*doc.GetPicture());
    } else {
        m_pImage = doc.SetPicture(std::move(m_pImage));
    }
}

void CUndoRecord::SwapSelectionState(CBriselDoc& doc) {
    SwapPicture(doc);
    m_pFloatImage = doc.SetFloatImage(std::move(m_pFloatImage));
    m_pMask = doc.SetFloatMask(std::move(m_pMask));
    SwapPosition(doc);
}

void CUndoRecord::UndoPutFloating(CBriselDoc& doc) {
    // The saved pixels go back through the floating mask at the place they
    // were taken from, so exactly the stamped pixels are restored.
    const int x = doc.FloatX();
    const int y = doc.FloatY();
    ImagePtr realFloat = doc.SetFloatImage(std::move(m_pImage));
    doc.SetFloatPosition(m_xFloat, m_yFloat);
    doc.PutFloating(true);
    doc.SetFloatImage(std::move(realFloat));
    doc.SetFloatPosition(x, y);
    Empty();
}

void CUndoRecord::UndoCrop(CBriselDoc& doc) {
    ImagePtr cropped = doc.SetPicture(std::move(m_pImage));
    doc.SetFloatImage(std::move(cropped));
    const CDibImage* picture = doc.GetPicture();
    ImagePtr emptyMask = CreateMask(picture->Width(), picture->Height(), true);
    if (!emptyMask) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
    } else {
        doc.SetMask(std::move(emptyMask));
    }
    doc.SetFloatMask(std::move(m_pMask));
    doc.SetFloatPosition(m_xFloat, m_yFloat);
    Empty();
}

void CUndoRecord::SwapImageAndMask(CBriselDoc& doc) {
    const bool floating = doc.GetFloatMask() != nullptr;
    m_pImage = doc.SetImage(std::move(m_pImage));
    m_pMask = floating ? doc.SetFloatMask(std::move(m_pMask)) : doc.SetMask(std::move(m_pMask));
    if (m_bWithPos) {
        SwapPosition(doc);
    }
}

int CUndoRecord::RecordRegion(CBriselDoc& doc) {
    const CDibImage* target = doc.GetImage();
    if (target == nullptr) {
        return 0;
    }
    if (target->BitsPerPixel() % 8 != 0) {
        return Record(doc, 1);
    }
    DestroySaved();
    m_pDoc = &doc;
    m_bWithPos = false;
    m_pPixels = std::make_unique<RegionPixels>(target->Width(), target->Height(), target->BitsPerPixel() / 8);
    m_nKind = 1;
    m_nState = kCanUndo;
    return 1;
}

int CUndoRecord::SaveRegion(CBriselDoc& doc, int left, int top, int right, int bottom) {
    RegionPixels* region = OpenRegion();
    const CDibImage* target = doc.GetImage();
    if (region == nullptr || m_nKind != 1 || m_nState != kCanUndo || m_pDoc != &doc || target == nullptr ||
        !region->Matches(*target)) {
        return 0;
    }
    return region->Save(*target, left, top, right, bottom) ? 1 : -1;
}

void CUndoRecord::Compact(CBriselDoc& doc) {
    if (RegionPixels* region = OpenRegion()) {
        region->Finish();
        return;
    }
    if (!m_bOwnCopy || !m_pImage || m_nState != kCanUndo || m_pDoc != &doc) {
        return;
    }
    m_bOwnCopy = false;
    const CDibImage* now = m_nKind == 1 ? doc.GetImage() : doc.GetPicture();
    if (now == nullptr) {
        return;
    }
    if (auto tiles = TilePixels::Difference(*m_pImage, *now)) {
        m_pPixels = std::move(tiles);
        m_pImage.reset();
    }
}

static std::size_t ImageBytes(const CUndoRecord::ImagePtr& image) {
    return image ? image->ImageBytes() + sizeof(CDibImage) + 64 : 0;
}

std::size_t CUndoRecord::Bytes() const {
    return sizeof(*this) + ImageBytes(m_pImage) + ImageBytes(m_pMask) + ImageBytes(m_pFloatImage) +
           (m_pPixels ? m_pPixels->Bytes() : 0);
}
