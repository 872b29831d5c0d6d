#include "paint/CloneStamp.h"

#include "paint/BrushEngine.h"

void CloneStamp::SetSource(int x, int y) {
    m_sourceX = x;
    m_sourceY = y;
    m_hasSource = true;
    m_offsetFixed = false;
}

bool CloneStamp::FixOffset(int x, int y, bool aligned) {
    if (!m_hasSource) {
        return false;
    }
    if (!aligned || !m_offsetFixed) {
        m_offsetX = x - m_sourceX;
        m_offsetY = y - m_sourceY;
        m_offsetFixed = true;
    }
    return true;
}

int CloneStamp::BeginStroke(BrushEngine& engine, const CDibImage& target) {
    if (!m_reference.TakeCopy(target)) {
        return 0;
    }
    engine.SetReferenceImage(m_reference.Image());
    engine.SetCloneOffset(m_offsetX, m_offsetY);
    return 1;
}

void CloneStamp::Dab(BrushEngine& engine, int x, int y, int size, int shape) {
    if (m_reference.Image() != nullptr) {
        engine.Dab(x, y, size, shape, kModeClone);
    }
}

void CloneStamp::Segment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size, int shape) {
    if (m_reference.Image() != nullptr) {
        engine.Segment(x1, y1, x2, y2, size, shape, kModeClone);
    }
}

void CloneStamp::EndStroke(BrushEngine& engine) {
    engine.SetReferenceImage(nullptr);
    m_reference.Release();
}
