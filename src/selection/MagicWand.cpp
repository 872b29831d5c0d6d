#include "selection/MagicWand.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "paint/DirectionalWalk.h"
#include "paint/PixelAccess.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"
#include "platform/WaitCursor.h"

#include <algorithm>
#include <type_traits>

namespace {

// Takes a neighbour whose mask bit differs from the mark and whose colour
// matches the seed's box, and sets its bit to the mark. The position is the
// current pixel of a 24-bit picture and the current row of the mask. The mark
// (select or deselect) is a compile-time choice.
template <bool kSelect> class TrueColorWandCell {
public:
    struct Position {
        std::uint8_t* pixel;
        std::uint8_t* maskRow;
    };

    TrueColorWandCell(const TrueColorPixels& pixels, const MaskPixels& mask, const ColorBox& box)
        : m_pixels(pixels), m_mask(mask), m_steps(pixels.Rows(), 3), m_maskSteps(mask.Rows(), 0), m_box(box) {
    }

    Position Start(int x, int y) const { return Position{m_pixels.At(x, y), m_mask.Rows().Row(y)}; }
    bool Take(Position& at, int k, int nx, int) const {
        std::uint8_t* row = at.maskRow + m_maskSteps.offset[k];
        std::uint8_t& byte = row[nx >> 3];
        const auto bit = static_cast<std::uint8_t>(0x80 >> (nx & 7));
        const std::uint8_t* p = at.pixel + m_steps.offset[k];
        if (((byte & bit) != 0) == kSelect || !m_box.Contains(TrueColorPixels::ReadAt(p))) {
            return false;
        }
        byte = kSelect ? static_cast<std::uint8_t>(byte | bit) : static_cast<std::uint8_t>(byte & ~bit);
        at.pixel += m_steps.offset[k];
        at.maskRow = row;
        return true;
    }
    void Back(Position& at, int k) const {
        at.pixel -= m_steps.offset[k];
        at.maskRow -= m_maskSteps.offset[k];
    }

private:
    TrueColorPixels m_pixels;
    MaskPixels m_mask;
    StepOffsets m_steps;
    StepOffsets m_maskSteps; // rows only: left and right stay in the row
    ColorBox m_box;
};

// Any picture through its reader, by coordinates.
template <class Pixels> class WandCell {
public:
    using Position = int;

    WandCell(const Pixels& pixels, const MaskPixels& mask, const ColorBox& box, int mark)
        : m_pixels(pixels), m_mask(mask), m_box(box), m_mark(mark) {}

    Position Start(int, int) const { return 0; }
    bool Take(Position&, int, int x, int y) const {
        if (m_mask.Bit(x, y) == m_mark || !m_box.Contains(m_pixels.Read(x, y))) {
            return false;
        }
        m_mask.SetBit(x, y, m_mark != 0);
        return true;
    }
    void Back(Position&, int) const {}

private:
    Pixels m_pixels;
    MaskPixels m_mask;
    ColorBox m_box;
    int m_mark;
};

template <class Cell> int Walk(const CDibImage& picture, int x, int y, const Cell& cell) {
    DirectionStack stack;
    bool complete = true;
    WalkFromSeed(picture.Width(), picture.Height(), x, y, stack, cell, complete);
    return complete ? 1 : 0;
}

template <class Pixels>
int MarkWith(CDibImage& picture, CDibImage& mask, int x, int y, int tolerance, bool continuous, int mark) {
    const Pixels pixels(picture);
    const MaskPixels bits(mask);
    const ColorBox box(pixels.Read(x, y), tolerance);
    bits.SetBit(x, y, mark != 0);
    if (continuous) {
        if constexpr (std::is_same_v<Pixels, TrueColorPixels>) {
            return mark ? Walk(picture, x, y, TrueColorWandCell<true>(pixels, bits, box))
                        : Walk(picture, x, y, TrueColorWandCell<false>(pixels, bits, box));
        } else {
            return Walk(picture, x, y, WandCell<Pixels>(pixels, bits, box, mark));
        }
    }
    for (int row = 0; row < picture.Height(); ++row) {
        for (int column = 0; column < picture.Width(); ++column) {
            if (box.Contains(pixels.Read(column, row))) {
                bits.SetBit(column, row, mark != 0);
            }
        }
    }
    return 1;
}

void ClearSetBits(CDibImage& mask) {
    ImageRect box;
    if (!FindSetBitsBounds(mask, box)) {
        return;
    }
    platform::HeapBlock zeros = platform::HeapBlock::Allocate(mask.RowBytes() + 4);
    for (int y = box.top; zeros && y <= box.bottom; ++y) {
        mask.PutSpan(box.left, box.right, y, zeros.data());
    }
}

} // namespace

int MarkWandArea(CDibImage& picture, CDibImage& mask, int x, int y, int tolerance, bool continuous,
                 int mark) {
    tolerance = std::clamp(tolerance, 0, 255);
    const int width = std::min(picture.Width(), mask.Width());
    const int height = std::min(picture.Height(), mask.Height());
    if (x < 0 || y < 0 || x >= width || y >= height || mask.BitsPerPixel() != 1) {
        return 0;
    }
    if (picture.BitsPerPixel() == 1) {
        return MarkWith<MaskPixels>(picture, mask, x, y, tolerance, continuous, mark);
    }
    if (picture.BitsPerPixel() == 24) {
        return MarkWith<TrueColorPixels>(picture, mask, x, y, tolerance, continuous, mark);
    }
    return 0;
}

int RunMagicWand(CommandContext& context, int x, int y, WandCombine combine, int tolerance, bool continuous) {
    CBriselDoc& doc = context.doc;
    const CDibImage* picture = doc.GetPicture();
    if (picture == nullptr || doc.GetSelectionMask() == nullptr || x < 0 || y < 0 || x >= picture->Width() ||
        y >= picture->Height()) {
        return 0;
    }
    platform::WaitCursor wait;
    if (combine != WandCombine::New) {
        doc.MergeFloatMask(false);
    }
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatPosition(0, 0);
    const int mark = combine == WandCombine::Subtract ? 0 : 1;
    CDibImage& mask = *doc.GetSelectionMask();
    if (!MarkWandArea(*doc.GetPicture(), mask, x, y, tolerance, continuous, mark)) {
        ClearSetBits(mask);
        return 0;
    }
    doc.FloatSelection();
    return doc.GetFloatMask() != nullptr ? 1 : 0;
}

WandSettings WandSettings::Read() {
    WandSettings settings;
    settings.tolerance = std::clamp(platform::Settings::ReadInt("MagicWand", "Tolerance", 32), 0, 255);
    settings.continuous = platform::Settings::ReadInt("MagicWand", "Continuous", 1) != 0;
    return settings;
}

void WandSettings::Write() const {
    platform::Settings::WriteInt("MagicWand", "Tolerance", tolerance);
    platform::Settings::WriteInt("MagicWand", "Continuous", continuous ? 1 : 0);
}
