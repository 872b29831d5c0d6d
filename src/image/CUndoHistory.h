#pragma once

#include "image/CUndoRecord.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

class CBriselDoc;
class RegionPixels;

// The undo history: a list of steps (`CUndoRecord`) and a cursor between the
// steps that are done and those that were undone. Commands call it as they
// would the single record: each `Record`/`RecordObjects` opens a new step
// (cutting the undone steps ahead of the cursor), and `AdoptFloatImage`,
// `SetPosition` and `SaveRegion` complete the newest one.
//
// - Undo swaps the step before the cursor and moves the cursor back; Redo the
//   step after it. A step of kind 4 or 9 empties itself when undone: the
//   history then ends there, so it cannot be redone.
// - A snapshot that cannot be taken (or a painting step whose saving runs out
//   of memory) empties the whole history: older steps would no longer fit the
//   picture once the command changed it without a step.
// - At most `Limits::steps` steps and `Limits::bytes` of memory are kept; the
//   oldest steps go first, the newest always stays.
// - The label given by `BeginCommand` names the steps recorded until the next
//   one ("Pen", "Rotate"); the Edit menu shows it.
// - The document's modified flag follows the cursor: a state the file holds
//   (the document was unmodified there) shows unmodified when reached again.
class CUndoHistory {
public:
    using ImagePtr = CUndoRecord::ImagePtr;

    struct Limits {
        int steps = 100;
        std::size_t bytes = std::size_t{1} << 30;
    };

    CUndoHistory() = default;
    CUndoHistory(const CUndoHistory&) = delete;
    CUndoHistory& operator=(const CUndoHistory&) = delete;

    void SetLimits(Limits limits);
    Limits GetLimits() const { return m_limits; }

    // Before a command or a tool's stroke runs: the steps it records carry
    // `label`. The step before is finished here (reduced to what changed).
    void BeginCommand(CBriselDoc& doc, std::string label);

    int Record(CBriselDoc& doc, int kind);
    int RecordWithWarning(CBriselDoc& doc, int kind);
    void RecordObjects(CBriselDoc& doc, ImagePtr image, ImagePtr mask, int kind, std::uint16_t value);
    void AdoptFloatImage(ImagePtr floatImage);
    void SetPosition(int x, int y);
    // A painting step (kind 1) that saves pixels as they are about to be
    // painted; message 32 and 0 when it cannot be opened.
    int RecordRegionWithWarning(CBriselDoc& doc);
    // Before painting left..right, top..bottom (inclusive) of the editing
    // target. False when the newest step is no longer this painting's open
    // step (a command ran in between) or memory ran out (message 32; the
    // history is emptied): the painting should stop.
    bool SaveRegion(CBriselDoc& doc, int left, int top, int right, int bottom);

    bool Undo(CBriselDoc& doc);
    bool Redo(CBriselDoc& doc);
    void Empty();

    bool CanUndo(const CBriselDoc* activeDoc) const;
    bool CanRedo(const CBriselDoc* activeDoc) const;
    // Labels of the steps Undo and Redo would take ("" when none).
    std::string UndoLabel() const;
    std::string RedoLabel() const;

    // The newest step's kind (0 when there is none).
    int Kind() const;
    const CUndoRecord* NewestStep() const { return m_steps.empty() ? nullptr : m_steps.back().record.get(); }
    int StepCount() const { return static_cast<int>(m_steps.size()); }
    int UndoableSteps() const { return m_cursor; }
    std::size_t Bytes() const;

private:
    struct Step {
        std::unique_ptr<CUndoRecord> record;
        std::string label;
        std::uint64_t serial = 0; // names the state after this step
        std::size_t bytes = 0;    // memory the record held when last looked at
    };

    void Settle(CBriselDoc& doc);
    CUndoRecord& Push(std::unique_ptr<CUndoRecord> record);
    void EnforceLimits();
    std::uint64_t CurrentState() const;
    void FollowModifiedFlag(CBriselDoc& doc);
    bool IsClean(std::uint64_t state) const;
    void ForgetLostCleanStates();
    void SwapStep(CBriselDoc& doc, std::size_t index);

    std::deque<Step> m_steps;
    int m_cursor = 0; // steps before it can be undone, the rest redone
    Limits m_limits;
    std::string m_label;
    std::uint64_t m_nextSerial = 1;
    std::uint64_t m_baseState = 0; // the state before the oldest step
    // States the document's file holds, and the document's count of clean
    // marks when the history last looked.
    std::vector<std::uint64_t> m_cleanStates;
    std::uint64_t m_seenCleanMarks = 0;
    bool m_pendingCompact = false; // the newest step may still be reduced
    // The saved pixels of the newest step while it is a painting still
    // saving (null otherwise), and the document it paints.
    RegionPixels* m_openRegion = nullptr;
    const CBriselDoc* m_openDoc = nullptr;
};
