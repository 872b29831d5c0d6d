#include "image/CUndoHistory.h"

#include "image/CBriselDoc.h"
#include "image/RegionPixels.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <algorithm>
#include <utility>

void CUndoHistory::SetLimits(Limits limits) {
    limits.steps = std::max(1, limits.steps);
    m_limits = limits;
    EnforceLimits();
}

void CUndoHistory::BeginCommand(CBriselDoc& doc, std::string label) {
    Settle(doc);
    m_label = std::move(label);
}

// Called whenever the document is in the state the newest step left it in
// (before a command, before Undo and Redo): learns whether the file holds
// that state, finishes the newest step and keeps the limits.
void CUndoHistory::Settle(CBriselDoc& doc) {
    const std::uint64_t now = CurrentState();
    if (doc.CleanMarks() != m_seenCleanMarks) {
        m_seenCleanMarks = doc.CleanMarks();
        m_cleanStates.assign(1, now);
    } else if (!doc.IsModified() && !IsClean(now)) {
        m_cleanStates.push_back(now);
        ForgetLostCleanStates();
    }
    if (!m_steps.empty()) {
        Step& newest = m_steps.back();
        if ((m_pendingCompact || m_openRegion != nullptr) && m_cursor == StepCount()) {
            newest.record->Compact(doc);
        }
        newest.bytes = newest.record->Bytes();
    }
    m_pendingCompact = false;
    m_openRegion = nullptr;
    EnforceLimits();
}

CUndoRecord& CUndoHistory::Push(std::unique_ptr<CUndoRecord> record) {
    m_steps.erase(m_steps.begin() + m_cursor, m_steps.end());
    const std::size_t bytes = record->Bytes();
    m_steps.push_back(Step{std::move(record), m_label, m_nextSerial++, bytes});
    m_cursor = StepCount();
    EnforceLimits();
    return *m_steps.back().record;
}

int CUndoHistory::Record(CBriselDoc& doc, int kind) {
    Settle(doc);
    if (kind == 0) {
        Empty();
        return 1;
    }
    auto record = std::make_unique<CUndoRecord>();
    if (!record->Record(doc, kind)) {
        Empty();
        return 0;
    }
    Push(std::move(record));
    m_pendingCompact = true;
    return 1;
}

int CUndoHistory::RecordWithWarning(CBriselDoc& doc, int kind) {
    if (Record(doc, kind)) {
        return 1;
    }
    platform::ShowMessage(platform::IDS_UNDO_OUT_OF_MEMORY, platform::MB_ICONSTOP);
    return 0;
}

void CUndoHistory::RecordObjects(CBriselDoc& doc, ImagePtr image, ImagePtr mask, int kind, std::uint16_t value) {
    // The command has already changed the document: the newest step can no
    // longer be compared with the picture it left, so it keeps its copy.
    m_pendingCompact = false;
    Settle(doc);
    auto record = std::make_unique<CUndoRecord>();
    record->RecordObjects(doc, std::move(image), std::move(mask), kind, value);
    if (record->Kind() == 0) {
        Empty();
        return;
    }
    Push(std::move(record));
}

void CUndoHistory::AdoptFloatImage(ImagePtr floatImage) {
    if (!m_steps.empty() && m_cursor == StepCount()) {
        m_steps.back().record->AdoptFloatImage(std::move(floatImage));
        m_steps.back().bytes = m_steps.back().record->Bytes();
    }
}

void CUndoHistory::SetPosition(int x, int y) {
    if (!m_steps.empty() && m_cursor == StepCount()) {
        m_steps.back().record->SetPosition(x, y);
    }
}

int CUndoHistory::RecordRegionWithWarning(CBriselDoc& doc) {
    Settle(doc);
    auto record = std::make_unique<CUndoRecord>();
    if (!record->RecordRegion(doc)) {
        Empty();
        platform::ShowMessage(platform::IDS_UNDO_OUT_OF_MEMORY, platform::MB_ICONSTOP);
        return 0;
    }
    RegionPixels* region = record->OpenRegion();
    Push(std::move(record));
    m_openRegion = region;
    m_openDoc = &doc;
    m_pendingCompact = region == nullptr;
    return 1;
}

bool CUndoHistory::SaveRegion(CBriselDoc& doc, int left, int top, int right, int bottom) {
    // A stroke asks mostly for places it has saved already: answered here,
    // without the step's checks, when the target is the one saved from.
    if (m_openRegion == nullptr) {
        return false;
    }
    if (&doc == m_openDoc && m_openRegion->Covers(doc.GetImage(), left, top, right, bottom)) {
        return true;
    }
    if (m_steps.empty() || m_cursor != StepCount()) {
        return false;
    }
    const int saved = m_steps.back().record->SaveRegion(doc, left, top, right, bottom);
    if (saved > 0) {
        return true;
    }
    m_openRegion = nullptr;
    if (saved < 0) {
        Empty();
        platform::ShowMessage(platform::IDS_UNDO_OUT_OF_MEMORY, platform::MB_ICONSTOP);
    }
    return false;
}

bool CUndoHistory::Undo(CBriselDoc& doc) {
    if (!CanUndo(&doc)) {
        return false;
    }
    Settle(doc);
    if (!CanUndo(&doc)) {
        return false;
    }
    --m_cursor;
    SwapStep(doc, static_cast<std::size_t>(m_cursor));
    if (m_steps[static_cast<std::size_t>(m_cursor)].record->Kind() == 0) {
        // Put Floating and Crop cannot be redone: the history ends here.
        m_steps.erase(m_steps.begin() + m_cursor, m_steps.end());
    }
    FollowModifiedFlag(doc);
    doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return true;
}

bool CUndoHistory::Redo(CBriselDoc& doc) {
    if (!CanRedo(&doc)) {
        return false;
    }
    Settle(doc);
    if (!CanRedo(&doc)) {
        return false;
    }
    SwapStep(doc, static_cast<std::size_t>(m_cursor));
    ++m_cursor;
    FollowModifiedFlag(doc);
    doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    return true;
}

void CUndoHistory::SwapStep(CBriselDoc& doc, std::size_t index) {
    Step& step = m_steps[index];
    step.record->Swap(doc);
    step.bytes = step.record->Bytes();
}

bool CUndoHistory::IsClean(std::uint64_t state) const {
    return std::find(m_cleanStates.begin(), m_cleanStates.end(), state) != m_cleanStates.end();
}

// States of dropped or cut steps can never come back.
void CUndoHistory::ForgetLostCleanStates() {
    if (m_cleanStates.size() <= 8) {
        return;
    }
    std::erase_if(m_cleanStates, [this](std::uint64_t state) {
        return state != m_baseState && std::none_of(m_steps.begin(), m_steps.end(),
                                                     [state](const Step& step) { return step.serial == state; });
    });
}

void CUndoHistory::FollowModifiedFlag(CBriselDoc& doc) {
    doc.SetModifiedFlag(!IsClean(CurrentState()));
    m_seenCleanMarks = doc.CleanMarks();
}

void CUndoHistory::Empty() {
    m_steps.clear();
    m_cursor = 0;
    m_baseState = m_nextSerial++;
    m_cleanStates.clear();
    m_pendingCompact = false;
    m_openRegion = nullptr;
}

void CUndoHistory::EnforceLimits() {
    while (StepCount() > 1 && (StepCount() > m_limits.steps || Bytes() > m_limits.bytes)) {
        if (m_cursor > 0) {
            m_baseState = m_steps.front().serial;
            m_steps.pop_front();
            --m_cursor;
        } else {
            m_steps.pop_back(); // nothing left to undo: the farthest redo step goes
        }
    }
}

std::uint64_t CUndoHistory::CurrentState() const {
    return m_cursor == 0 ? m_baseState : m_steps[static_cast<std::size_t>(m_cursor - 1)].serial;
}

bool CUndoHistory::CanUndo(const CBriselDoc* activeDoc) const {
    return m_cursor > 0 && m_steps[static_cast<std::size_t>(m_cursor - 1)].record->CanUndo(activeDoc);
}

bool CUndoHistory::CanRedo(const CBriselDoc* activeDoc) const {
    return m_cursor < StepCount() && m_steps[static_cast<std::size_t>(m_cursor)].record->CanRedo(activeDoc);
}

std::string CUndoHistory::UndoLabel() const {
    return m_cursor > 0 ? m_steps[static_cast<std::size_t>(m_cursor - 1)].label : std::string();
}

std::string CUndoHistory::RedoLabel() const {
    return m_cursor < StepCount() ? m_steps[static_cast<std::size_t>(m_cursor)].label : std::string();
}

int CUndoHistory::Kind() const {
    return m_steps.empty() ? 0 : m_steps.back().record->Kind();
}

std::size_t CUndoHistory::Bytes() const {
    std::size_t total = 0;
    for (const Step& step : m_steps) {
        total += step.bytes;
    }
    return total;
}
