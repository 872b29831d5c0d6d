#pragma once

#include "image/CDibImage.h"
#include "image/SavedPixels.h"

#include <cstdint>
#include <memory>

class CBriselDoc;
class RegionPixels;

// One undo step. `Record` saves what a kind of step needs before a command
// changes anything; `RecordObjects` takes over images a command has already
// replaced. Undo and Redo are the same `Swap`. `CUndoHistory` keeps a list of
// these.
//
// Where a step would keep a whole copy of the picture (or of the floating
// pixels), it may keep only saved pixels instead (`SavedPixels`), which swap
// in place: a painting step opened with `RecordRegion` saves the places the
// painting is about to touch (`SaveRegion`), and a step whose own copy was
// taken by `Record` is reduced by `Compact` to the tiles its command changed.
//
// Kinds: 0 none, 1 image, 2 resolution, 3 floating position, 4 Put Floating,
// 5 and 7 selection state, 6 Discard Floating, 8 move-selection lift, 9 Crop,
// 10 image and mask (rotate, flip of a selection, rescale).
class CUndoRecord {
public:
    using ImagePtr = std::unique_ptr<CDibImage>;

    enum State : std::int16_t { kNothing = 0, kCanUndo = 1, kCanRedo = 2 };

    CUndoRecord() = default;
    CUndoRecord(const CUndoRecord&) = delete;
    CUndoRecord& operator=(const CUndoRecord&) = delete;

    // Takes the snapshot of `kind`; 0 when a copy could not be made, and the
    // record is then left empty. Kinds 6 and 9 take the document's own objects
    // (its pointers become null); kind 8 saves the picture and position, and
    // the floating image the command then replaces comes in through
    // AdoptFloatImage.
    int Record(CBriselDoc& doc, int kind);
    void RecordObjects(CBriselDoc& doc, ImagePtr image, ImagePtr mask, int kind, std::uint16_t value);
    void AdoptFloatImage(ImagePtr floatImage);
    void SetPosition(int x, int y);
    void Swap(CBriselDoc& doc);
    // Record, and on failure tell the user that this command cannot be
    // undone (the command then goes on without undo).
    int RecordWithWarning(CBriselDoc& doc, int kind);
    // An image step (kind 1) that saves nothing yet: the painting that follows
    // calls SaveRegion before each change. 0 when the document has no image.
    int RecordRegion(CBriselDoc& doc);
    // Saves the editing target's pixels left..right, top..bottom (inclusive)
    // that this region step has not saved yet. 1 saved, 0 when this is not
    // an open region step of that image, -1 when memory ran out.
    int SaveRegion(CBriselDoc& doc, int left, int top, int right, int bottom);
    // After the step's command has finished: keeps of the step's own whole
    // copy only the tiles that differ from the document now; packs a region
    // step's saved pixels.
    void Compact(CBriselDoc& doc);
    // Memory the step holds.
    std::size_t Bytes() const;
    // The Undo and Redo commands: swap when enabled, then refresh the views.
    bool Undo(CBriselDoc& doc);
    bool Redo(CBriselDoc& doc);
    // Forgets the step and destroys everything saved.
    void Empty();

    bool CanUndo(const CBriselDoc* activeDoc) const;
    bool CanRedo(const CBriselDoc* activeDoc) const;

    int Kind() const { return m_nKind; }
    int State() const { return m_nState; }
    std::uint16_t Value() const { return m_nValue; }
    const CBriselDoc* Document() const { return m_pDoc; }
    const CDibImage* SavedImage() const { return m_pImage.get(); }
    const CDibImage* SavedMask() const { return m_pMask.get(); }
    const CDibImage* SavedFloatImage() const { return m_pFloatImage.get(); }
    const SavedPixels* SavedPixelStore() const { return m_pPixels.get(); }
    // The saved pixels of a region step (`RecordRegion`), or null.
    RegionPixels* OpenRegion() const { return m_pPixels ? m_pPixels->AsRegion() : nullptr; }

private:
    bool SwapWhen(bool enabled, CBriselDoc& doc);
    int RecordSelectionState(CBriselDoc& doc);
    void SwapSelectionState(CBriselDoc& doc);
    void SwapPosition(CBriselDoc& doc);
    void UndoPutFloating(CBriselDoc& doc);
    void UndoCrop(CBriselDoc& doc);
    void SwapImageAndMask(CBriselDoc& doc);
    void DestroySaved();
    void SwapPicture(CBriselDoc& doc);

    CBriselDoc* m_pDoc = nullptr;
    ImagePtr m_pImage;
    ImagePtr m_pMask;
    ImagePtr m_pFloatImage;
    // Replaces m_pImage (the picture, or for kind 1 the editing target) when set.
    std::unique_ptr<SavedPixels> m_pPixels;
    // m_pImage is a copy Record made, which Compact may still reduce.
    bool m_bOwnCopy = false;
    int m_xFloat = 0;
    int m_yFloat = 0;
    std::int16_t m_nKind = 0;
    std::int16_t m_nState = kNothing;
    std::uint16_t m_nValue = 0;
    bool m_bWithPos = false;
};
