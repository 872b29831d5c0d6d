#include "image/CBriselDoc.h"

#include "image/DibHelpers.h"
#include "image/FloatingBlend.h"
#include "platform/HeapBlock.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

#include <algorithm>
#include <utility>

using platform::HeapBlock;

namespace {
void ShowCannotCreate() {
    platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
}
} // namespace

CDibImage* CBriselDoc::GetImage() const {
    return m_pFloatImage ? m_pFloatImage.get() : m_pImage.get();
}

CDibImage* CBriselDoc::GetMask() const {
    return m_pFloatMask ? m_pFloatMask.get() : m_pMask.get();
}

CBriselDoc::ImagePtr CBriselDoc::SetImage(ImagePtr image) {
    return m_pFloatImage ? SetFloatImage(std::move(image)) : SetPicture(std::move(image));
}

CBriselDoc::ImagePtr CBriselDoc::SetPicture(ImagePtr image) {
    return std::exchange(m_pImage, std::move(image));
}

CBriselDoc::ImagePtr CBriselDoc::SetFloatImage(ImagePtr image) {
    return std::exchange(m_pFloatImage, std::move(image));
}

CBriselDoc::ImagePtr CBriselDoc::SetMask(ImagePtr image) {
    return std::exchange(m_pMask, std::move(image));
}

CBriselDoc::ImagePtr CBriselDoc::SetFloatMask(ImagePtr image) {
    return std::exchange(m_pFloatMask, std::move(image));
}

void CBriselDoc::SetFloatPosition(int x, int y) {
    m_xFloat = x;
    m_yFloat = y;
}

ImageRect CBriselDoc::GetFloatRect() const {
    if (!m_pFloatMask) {
        return ImageRect{};
    }
    return ImageRect{m_xFloat, m_yFloat, m_xFloat + m_pFloatMask->Width(), m_yFloat + m_pFloatMask->Height()};
}

int CBriselDoc::SetResolution(int dpi) {
    const int old = m_pImage->DpiX();
    m_pImage->SetResolution(static_cast<std::int16_t>(dpi), static_cast<std::int16_t>(dpi));
    return old;
}

CBriselDoc::ImagePtr CBriselDoc::CopyPictureRect(int x0, int y0, int x1, int y1) const {
    const CDibImage& picture = *m_pImage;
    BitmapInfoHeader header;
    InitDibHeader(header, x1 - x0 + 1, y1 - y0 + 1, picture.BitsPerPixel(), picture.DpiX(), picture.DpiY());
    auto result = std::make_unique<CDibImage>();
    HeapBlock span;
    if (result->Create(&header, picture.Palette())) {
        span = HeapBlock::Allocate(picture.RowBytes() + 4);
    }
    if (!span) {
        ShowCannotCreate();
        return nullptr;
    }
    result->SetResolution(static_cast<std::int16_t>(picture.DpiX()),
                          static_cast<std::int16_t>(picture.DpiY()));
    // Only the part inside the picture is copied; the rest stays zero.
    const int left = std::max(x0, 0);
    const int right = std::min(x1, picture.Width() - 1);
    const int top = std::max(y0, 0);
    const int bottom = std::min(y1, picture.Height() - 1);
    for (int y = top; left <= right && y <= bottom; ++y) {
        picture.GetSpan(left, right, y, span.data());
        result->PutSpan(left - x0, right - x0, y - y0, span.data());
    }
    return result;
}

int CBriselDoc::CreateFloating(int x0, int y0, int x1, int y1, bool emptyMask) {
    platform::WaitCursor wait;
    m_pFloatImage.reset();
    m_pFloatMask.reset();
    ImagePtr image = CopyPictureRect(x0, y0, x1, y1);
    if (!image) {
        return 0;
    }
    ImagePtr mask = CreateMask(image->Width(), image->Height(), emptyMask);
    if (!mask) {
        ShowCannotCreate();
        return 0;
    }
    m_pFloatImage = std::move(image);
    m_pFloatMask = std::move(mask);
    m_bFloating = true;
    return 1;
}

int CBriselDoc::FloatSelection() {
    platform::WaitCursor wait;
    ImageRect box;
    if (!m_pMask || !FindSetBitsBounds(*m_pMask, box)) {
        return 0;
    }
    HeapBlock span = HeapBlock::Allocate(m_pMask->RowBytes() + 4);
    if (!span || !CreateFloating(box.left, box.top, box.right, box.bottom, true)) {
        return 0;
    }
    const int width = box.right - box.left + 1;
    for (int y = box.top; y <= box.bottom; ++y) {
        m_pMask->GetSpan(box.left, box.right, y, span.data());
        m_pFloatMask->PutSpan(0, width - 1, y - box.top, span.data());
    }
    // The selection now lives in the floating mask; the work mask is left
    // empty so that the next add or subtract starts from the floating mask.
    ClearMaskRect(box);
    SetFloatPosition(box.left, box.top);
    return 1;
}

void CBriselDoc::ClearMaskRect(const ImageRect& box) {
    HeapBlock zeros = HeapBlock::Allocate(m_pMask->RowBytes() + 4);
    if (!zeros) {
        return;
    }
    for (int y = box.top; y <= box.bottom; ++y) {
        m_pMask->PutSpan(box.left, box.right, y, zeros.data());
    }
}

void CBriselDoc::MergeFloatMask(bool invert) {
    if (!m_pFloatMask || !m_pMask) {
        return;
    }
    HeapBlock span = HeapBlock::Allocate(m_pFloatMask->RowBytes() + 4);
    if (!span) {
        return;
    }
    const int first = std::max(0, -m_xFloat);
    const int last = std::min(m_pFloatMask->Width() - 1, m_pMask->Width() - 1 - m_xFloat);
    if (first > last) {
        return;
    }
    const std::size_t spanBytes = static_cast<std::size_t>((last - first) / 8 + 1);
    for (int fy = 0; fy < m_pFloatMask->Height(); ++fy) {
        m_pFloatMask->GetSpan(first, last, fy, span.data());
        if (invert) {
            for (std::size_t i = 0; i < spanBytes; ++i) {
                span.data()[i] = static_cast<std::uint8_t>(~span.data()[i]);
            }
        }
        m_pMask->PutSpan(m_xFloat + first, m_xFloat + last, m_yFloat + fy, span.data());
    }
}

int CBriselDoc::PutFloating(bool keep) {
    if (!m_pFloatImage || !m_pFloatMask || !m_pImage) {
        return 0;
    }
    platform::WaitCursor wait;
    CDibImage& picture = *m_pImage;
    const int floatWidth = m_pFloatImage->Width();
    const int left = std::max(m_xFloat, 0);
    const int right = std::min(m_xFloat + floatWidth - 1, picture.Width() - 1);
    const int top = std::max(m_yFloat, 0);
    const int bottom = std::min(m_yFloat + m_pFloatImage->Height() - 1, picture.Height() - 1);
    HeapBlock pictureSpan = HeapBlock::Allocate(picture.RowBytes());
    HeapBlock floatRow = HeapBlock::Allocate(m_pFloatImage->RowBytes());
    HeapBlock maskRow = HeapBlock::Allocate(m_pFloatMask->RowBytes());
    if (!pictureSpan || !floatRow || !maskRow) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    for (int y = top; left <= right && y <= bottom; ++y) {
        m_pFloatImage->GetRow(y - m_yFloat, floatRow.data());
        m_pFloatMask->GetRow(y - m_yFloat, maskRow.data());
        picture.GetSpan(left, right, y, pictureSpan.data());
        BlendFloatingRow(pictureSpan.data(), left, right, floatRow.data(), maskRow.data(), m_xFloat,
                         floatWidth);
        picture.PutSpan(left, right, y, pictureSpan.data());
    }
    if (!keep) {
        m_pFloatImage.reset();
        m_pFloatMask.reset();
        SetFloatPosition(0, 0);
    }
    m_bModified = true;
    m_bFloating = false;
    UpdateAllViews();
    return 1;
}

void CBriselDoc::DiscardFloating() {
    m_pFloatImage.reset();
    m_pFloatMask.reset();
    SetFloatPosition(0, 0);
    m_bFloating = false;
    UpdateAllViews();
}

int CBriselDoc::NewImage(const BitmapInfoHeader& header, int imageType, ColorWord contents) {
    m_bModified = false;
    m_bReduced = false;
    m_fileTransparent = false;
    RgbQuad palette[256];
    BuildPalette(palette, imageType);
    auto picture = std::make_unique<CDibImage>();
    HeapBlock row = HeapBlock::Allocate(DibRowBytes(header.biWidth, header.biBitCount));
    ImagePtr mask;
    if (row && picture->Create(&header, palette)) {
        FillRow(row.data(), contents, picture->Width(), imageType);
        for (int y = 0; y < picture->Height(); ++y) {
            picture->SetRow(y, row.data());
        }
        mask = CreateMask(picture->Width(), picture->Height(), true);
    }
    if (!mask) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    DeleteContents();
    SetPicture(std::move(picture));
    SetMask(std::move(mask));
    return 1;
}

void CBriselDoc::DeleteContents() {
    m_pImage.reset();
    m_pFloatImage.reset();
    m_pMask.reset();
    m_pFloatMask.reset();
    SetFloatPosition(0, 0);
    m_bFloating = false;
}

int CBriselDoc::AddViewObserver(ViewObserver observer) {
    m_observers.emplace_back(m_nextObserverId, std::move(observer));
    return m_nextObserverId++;
}

void CBriselDoc::RemoveViewObserver(int id) {
    std::erase_if(m_observers, [id](const auto& entry) { return entry.first == id; });
}

void CBriselDoc::UpdateAllViews(int hint) const {
    for (const auto& [id, observer] : m_observers) {
        observer(hint);
    }
}

void CBriselDoc::SetModifiedFlag(bool modified) {
    const bool changed = modified != m_bModified;
    m_bModified = modified;
    m_cleanMarks += modified ? 0 : 1;
    if (changed && m_modifiedListener) {
        m_modifiedListener();
    }
}
