#include "paint/DirectionStack.h"

#include <cstring>

using platform::HeapBlock;

DirectionStack::DirectionStack() {
    HeapBlock first = HeapBlock::Allocate(kChunkBytes);
    if (!first) {
        return;
    }
    m_chunks.push_back(std::move(first));
    m_current = 0;
    Header(0) = ChunkHeader{-1, -1, 0, 0, 0};
    LoadCurrent();
}

DirectionStack::ChunkHeader& DirectionStack::Header(int chunk) const {
    return *reinterpret_cast<ChunkHeader*>(m_chunks[static_cast<std::size_t>(chunk)].data());
}

// The header keeps the count and the position within the byte and the byte
// index of the last entry written, as the chunk layout describes; the hot path
// works from m_count alone and writes the header back on a chunk change.
void DirectionStack::SaveCurrent() {
    ChunkHeader& header = Header(m_current);
    header.count = m_count;
    header.position = m_count == 0 ? 0 : (m_count - 1) & 3;
    header.byteIndex = m_count == 0 ? 0 : (m_count - 1) >> 2;
}

void DirectionStack::LoadCurrent() {
    m_data = m_chunks[static_cast<std::size_t>(m_current)].data() + kHeaderBytes;
    m_count = Header(m_current).count;
}

bool DirectionStack::NextChunk() {
    HeapBlock chunk = HeapBlock::Allocate(kChunkBytes);
    if (!chunk) {
        return false;
    }
    SaveCurrent();
    const int previous = m_current;
    m_chunks.push_back(std::move(chunk));
    m_current = static_cast<int>(m_chunks.size()) - 1;
    Header(previous).next = m_current;
    Header(m_current) = ChunkHeader{-1, previous, 0, 0, 0};
    LoadCurrent();
    return true;
}

bool DirectionStack::PreviousChunk() {
    if (m_current < 0) {
        return false;
    }
    const int previous = Header(m_current).previous;
    if (previous < 0) {
        return false;
    }
    // Chunks are only ever added at the end, so the empty current chunk is
    // the last one in the list.
    m_chunks.pop_back();
    m_current = previous;
    Header(m_current).next = -1;
    LoadCurrent();
    return m_count > 0;
}
